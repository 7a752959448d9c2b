// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#include "edialog.h"

#include <QShortcut>

EDialog::EDialog(QWidget* parent, Qt::WindowFlags flags)
    : QDialog(parent, flags | Qt::WindowTitleHint)
{
    setModal(true);
    // Escape goes through close() rather than QDialog's own reject(), so that a dialog which
    // refuses its closeEvent (unsaved edits) refuses Escape too.
    auto* escape = new QShortcut(QKeySequence(Qt::Key_Escape), this);
    escape->setObjectName(QStringLiteral("escape"));
    connect(escape, &QShortcut::activated, this, &QWidget::close);
}
