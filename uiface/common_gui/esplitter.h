// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#pragma once

#include "common_gui_export.h"

#include <QList>
#include <QSplitter>
#include <QSplitterHandle>

class QSettings;

/// A splitter that remembers its pane sizes while it is hidden, saves them as an integer list
/// under a name of the caller's choice, and paints its handles as a Light-to-Dark gradient.
///
/// \code
/// {
///     ESettings s(QStringLiteral("MyWindow"));
///     splitter->saveState(s, "Splitter");   // MyWindow\Splitter\size, \1\Item, ...
/// }
/// \endcode
class COMMON_GUI_EXPORT ESplitter : public QSplitter
{
    Q_OBJECT
public:
    explicit ESplitter(QWidget* parent = nullptr);
    explicit ESplitter(Qt::Orientation orientation, QWidget* parent = nullptr);

    /// Hiding a visible splitter remembers its sizes first, so a hidden splitter saves them.
    void setVisible(bool visible) override;

    /// Writes the sizes (those before hiding, while hidden) under \a name; nothing when there are none.
    void saveState(QSettings& s, const char* name);
    /// Applies the list stored under \a name if it holds at least two sizes.
    void loadState(QSettings& s, const char* name);

protected:
    QSplitterHandle* createHandle() override;

private:
    QList<int> hiddenSizes; ///< sizes() at the last hide of the visible splitter
};

/// A splitter handle painted as a gradient from the palette's Light to its Dark colour, across
/// the handle; nothing else is drawn.
class COMMON_GUI_EXPORT ESplitterHandle : public QSplitterHandle
{
    Q_OBJECT
public:
    ESplitterHandle(Qt::Orientation orientation, QSplitter* parent);

protected:
    void paintEvent(QPaintEvent* e) override;
};
