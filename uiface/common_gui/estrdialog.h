// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#pragma once

#include "common_gui_export.h"
#include "edialog.h"

#include <QString>

class EEditPair;

/// Asks for one line of text (the empty one included), with OK and Cancel. OK writes the text into
/// the caller's string; Cancel and Escape leave it alone.
///
/// \code
/// QString host = QStringLiteral("gateway");
/// EStrDialog dialog(this, QStringLiteral("Host"), QStringLiteral("&Host:"), host);
/// if (dialog.exec() == QDialog::Accepted)
///     use(host);
/// \endcode
class COMMON_GUI_EXPORT EStrDialog : public EDialog
{
    Q_OBJECT
public:
    EStrDialog(QWidget* parent, const QString& title, const QString& label, QString& value);

    /// Accepts, then stores the text.
    /// \note Receivers of accepted() still see the caller's old string, on purpose.
    void accept() override;

private:
    EEditPair* pair = nullptr;
    QString* value = nullptr;
};
