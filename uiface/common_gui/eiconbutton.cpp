// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#include "eiconbutton.h"

#include <QIcon>

EIconButton::EIconButton(const QIcon& icon, QWidget* parent)
    : QPushButton(icon, QString(), parent)
{
    setFixedWidth(sizeHint().height());
}

bool EIconButton::setSlotForClick(QObject* receiver, const char* slot)
{
    return connect(this, SIGNAL(clicked()), receiver, slot);
}
