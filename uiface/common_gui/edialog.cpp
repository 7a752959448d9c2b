// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#include "edialog.h"

#include "eboxlayout.h"
#include "ebuttonpanel.h"

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

void EDialog::layOutValueDialog(const QString& title, QWidget* field)
{
    setWindowTitle(title);
    auto* root = new EVRootBoxLayout(this);
    field->setObjectName(QStringLiteral("valuePair"));
    root->addWidget(field, 0);
    auto* panel = new EButtonPanel(this, EButtonPanel::OK | EButtonPanel::Cancel);
    root->addWidget(panel);
    connect(panel, &EButtonPanel::cancel, this, &QDialog::reject);
    connect(panel, &EButtonPanel::ok, this, &QDialog::accept);
}
