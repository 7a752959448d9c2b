// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#pragma once

#include "common_gui_export.h"
#include "edialog.h"

class EEditPair;

/// Asks for an existing password: one masked field under an optional message, with OK and Cancel.
/// The dialog stays on top of other windows so that the prompt is never hidden.
///
/// \code
/// EPassDialog dialog(this, QStringLiteral("Token"), LCQT__Password, QStringLiteral("Token \"user\" is locked."));
/// if (dialog.exec() == QDialog::Accepted)
///     unlock(dialog.getPassword());
/// \endcode
class COMMON_GUI_EXPORT EPassDialog : public EDialog
{
    Q_OBJECT
public:
    /// \a label captions the field; an empty \a message adds no line above it.
    EPassDialog(QWidget* parent, const QString& title, const QString& label, const QString& message);

    /// The text of the field.
    QString getPassword();
    /// Puts \a s into the field.
    void setPassword(const QString& s);

    EEditPair* pair = nullptr; ///< the masked field and its caption
};
