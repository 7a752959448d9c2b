// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#include "epasswordpanel.h"

#include "common_gui_loc.h"
#include "echeckbox.h"
#include "eboxlayout.h"
#include "eeditbox.h"
#include "eeditpair.h"
#include "emessage.h"

#include <QFontMetrics>
#include <QLabel>
#include <QPalette>
#include <QTimer>

#include <algorithm>
#include <limits>

bool QString_constraint_(const QString& s, bool (QChar::*test)() const)
{
    return std::any_of(s.cbegin(), s.cend(), [test](const QChar& c) { return (c.*test)(); });
}

int getStrength(QString& s)
{
    if (s.isEmpty())
        return EPasswordPanel::Zero;
    int score = s.length() > 8 ? 1 : 0;
    using Test = bool (QChar::*)() const;
    for (const Test test : {Test(&QChar::isDigit), Test(&QChar::isLetter), Test(&QChar::isLower),
                            Test(&QChar::isUpper), Test(&QChar::isPunct)})
        score += QString_constraint_(s, test) ? 1 : 0;
    if (s.length() >= 6 && score >= 4)
        return score == 6 ? EPasswordPanel::High : EPasswordPanel::Medium;
    return EPasswordPanel::Low;
}

// ---------------------------------------------------------------------------------------------------------
// EPasswordPowerValidator

EPasswordPowerValidator::EPasswordPowerValidator(QObject* parent, QLabel* label, QWidget* okWidget, int minimum)
    : QValidator(parent)
    , label(label)
    , okWidget(okWidget)
    , minimum(minimum)
{
}

QValidator::State EPasswordPowerValidator::validate(QString& s, int&) const
{
    const int level = std::clamp(getStrength(s), int(EPasswordPanel::Zero), int(EPasswordPanel::High));
    if (label) {
        const QString* const texts[] = {&LCQT__Zero, &LCQT__Low, &LCQT__Medium, &LCQT__High};
        const Qt::GlobalColor colours[] = {Qt::red, Qt::red, Qt::darkYellow, Qt::darkGreen};
        label->setText(*texts[level]);
        QPalette palette = label->palette();
        palette.setBrush(label->foregroundRole(), QBrush(colours[level], Qt::SolidPattern));
        label->setPalette(palette);
    }
    if (okWidget)
        okWidget->setEnabled(level >= minimum);
    return QValidator::Acceptable;
}

// ---------------------------------------------------------------------------------------------------------
// EPasswordPanel

namespace {

EEditPair* makePasswordPair(const QString& caption, const QString* password, const char* name)
{
    auto* pair = new EEditPair(caption);
    pair->setObjectName(QLatin1String(name));
    EEditBox* edit = pair->getEditBox();
    edit->setObjectName(QLatin1String(name) + QLatin1String("Edit"));
    edit->setEchoMode(QLineEdit::Password);
    // A pasted password is never cut short silently: the line edit's own limit is 32767.
    edit->setMaxLength(std::numeric_limits<int>::max());
    if (password)
        edit->setText(*password);
    return pair;
}

} // namespace

EPasswordPanel::EPasswordPanel(QWidget* parent, QString* password, EPasswordPanel::Strength minimum,
                               QWidget* okWidget)
    : QWidget(parent)
    , password(password)
{
    auto* column = new EVBoxLayout(this);

    passwordPair = makePasswordPair(LCQT__Password, password, "passwordPair");
    column->addWidget(passwordPair);
    confirmPair = makePasswordPair(LCQT__Confirm_password, password, "confirmPair");
    confirmPair->bind(passwordPair);
    column->addWidget(confirmPair);

    auto* row = new EHBoxLayout;
    column->addLayout(row);

    strengthLabel = new QLabel;
    strengthLabel->setObjectName(QStringLiteral("strengthLabel"));
    const QFontMetrics metrics = fontMetrics();
    int widest = 0;
    for (const QString* level : {&LCQT__Zero, &LCQT__Low, &LCQT__Medium, &LCQT__High})
        widest = std::max(widest, metrics.horizontalAdvance(*level));
    strengthLabel->setMinimumWidth(widest);
    auto* strengthPair = new EPair(nullptr, QBoxLayout::LeftToRight);
    strengthPair->setObjectName(QStringLiteral("strengthPair"));
    strengthPair->setWidget(strengthLabel, true);
    strengthPair->setLabelText(LCQT__Password_strength);
    strengthPair->bind(passwordPair);
    row->addWidget(strengthPair);

    showCheck = new ECheckBox(LCQT__Show_password);
    showCheck->setObjectName(QStringLiteral("showCheck"));
    showCheck->setMinimumWidth(showCheck->sizeHint().width() + metrics.horizontalAdvance(QStringLiteral(" (3)")));
    row->addWidget(showCheck, 0, Qt::AlignRight);

    EEditBox* edit = passwordPair->getEditBox();
    auto* validator = new EPasswordPowerValidator(this, strengthLabel, okWidget, minimum);
    QString text = edit->text();
    int pos = 0;
    validator->validate(text, pos);
    edit->setValidator(validator);

    connect(showCheck, &QCheckBox::stateChanged, this, &EPasswordPanel::showPassword);
}

int EPasswordPanel::minimumStrength() const
{
    const auto* validator = qobject_cast<const EPasswordPowerValidator*>(passwordPair->getEditBox()->validator());
    return validator ? validator->minimum : int(Zero);
}

bool EPasswordPanel::accept()
{
    QString text = getPassword();
    if (text != confirmPair->getEditBox()->text()) {
        EMessage::erro(this, LCQT__Passwords_do_not_match);
        return false;
    }
    if (getStrength(text) < minimumStrength()) {
        EMessage::erro(this, LCQT__Password_is_not_strong_enough);
        return false;
    }
    if (password)
        *password = text;
    return true;
}

QString EPasswordPanel::getPassword() const
{
    return passwordPair->getEditBox()->text();
}

void EPasswordPanel::setPassword(const QString& s)
{
    passwordPair->getEditBox()->setText(s);
    confirmPair->getEditBox()->setText(s);
}

void EPasswordPanel::clearPassword()
{
    setPassword(QStringLiteral(""));
}

void EPasswordPanel::setPasswordPrompt(const QString& text)
{
    passwordPair->setLabelText(text);
}

void EPasswordPanel::showPassword()
{
    const QLineEdit::EchoMode mode = showCheck->isChecked() ? QLineEdit::Normal : QLineEdit::Password;
    passwordPair->getEditBox()->setEchoMode(mode);
    confirmPair->getEditBox()->setEchoMode(mode);
    countdown = 4;
    hidePassword();
}

void EPasswordPanel::hidePassword()
{
    const int old = countdown;
    countdown = old - 1;
    if (old != 1 && showCheck->isChecked()) {
        showCheck->setText(LCQT__Show_password + QStringLiteral(" (%1)").arg(countdown));
        QTimer::singleShot(1000, this, &EPasswordPanel::hidePassword);
    } else {
        showCheck->setChecked(false);
        showCheck->setText(LCQT__Show_password);
    }
}
