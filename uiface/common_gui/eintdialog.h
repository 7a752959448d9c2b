// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#pragma once

#include "common_gui_export.h"
#include "edialog.h"

class ESpinPair;

/// Asks for one number in a range, with OK and Cancel. OK writes the number into the caller's
/// variable; Cancel and Escape leave it alone.
///
/// \code
/// int retries = 3;
/// EIntDialog dialog(this, QStringLiteral("Retries"), QStringLiteral("&Retries:"), 1, 10, retries);
/// if (dialog.exec() == QDialog::Accepted)
///     use(retries);
/// \endcode
class COMMON_GUI_EXPORT EIntDialog : public EDialog
{
    Q_OBJECT
public:
    /// \a value outside \a min..\a max is shown clamped, and the clamped number is stored on OK.
    EIntDialog(QWidget* parent, const QString& title, const QString& label, int min, int max, int& value);

    /// Stores the number, then accepts.
    void accept() override;

private:
    ESpinPair* pair = nullptr;
    int* value = nullptr;
};
