// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#pragma once

#include "common_gui_export.h"

#include <QSize>

#include <list>

class EPair;

/// The alignment group of bound pairs: every caption gets the size of the largest one, width and
/// height taken separately. Created by EPair::bind(); it deletes itself when its last pair leaves
/// and when its pairs move to another group.
class COMMON_GUI_EXPORT EBind
{
public:
    EBind();
    EBind(const EBind&) = delete;
    EBind& operator=(const EBind&) = delete;

    /// Appends \a p; a pair of another group brings that whole group along, and the other group is
    /// deleted. Does not resize.
    void addPair(EPair* p);
    /// Removes \a p and clears its group; deletes this group when it becomes empty. The remaining
    /// captions keep their size.
    void removePair(EPair* p);

    /// The largest caption width and the largest caption height (size hints); 0 x 0 when empty.
    QSize getGreatestCommonSize();
    /// The same over the input widgets.
    QSize getGreatestCommonSizeRight();
    /// Gives every caption the common size.
    void updateSize();

    /// The pairs, in the order in which they joined.
    const std::list<EPair*>& members() const { return pairs; }

private:
    ~EBind() = default; // only removePair() and addPair() end a group

    std::list<EPair*> pairs = {};
};
