// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#pragma once

#include "common_gui_export.h"

#include <QDialog>

/// The base of every dialog of the library: modal, with a title bar, closed by Escape.
///
/// \code
/// EDialog dialog(parent);
/// dialog.setWindowTitle(QStringLiteral("Details"));
/// dialog.exec();     // Escape closes it as the close button does (rejected)
/// \endcode
class COMMON_GUI_EXPORT EDialog : public QDialog
{
    Q_OBJECT
public:
    /// A modal dialog with \a flags plus Qt::WindowTitleHint.
    explicit EDialog(QWidget* parent = nullptr, Qt::WindowFlags flags = Qt::WindowFlags());

protected:
    /// Builds the dialogs that ask for one value (EIntDialog, EStrDialog): \a title, the captioned
    /// \a field (named "valuePair") above OK and Cancel, which call accept() and reject().
    void layOutValueDialog(const QString& title, QWidget* field);
};
