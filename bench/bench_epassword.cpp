// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
// One keystroke at the end of a long password, painted: our new-password panel (strength measured
// on every change, label and OK button updated) against a stock QLineEdit in password mode.
#include "benchutil.h"

#include "eeditbox.h"
#include "eeditpair.h"
#include "epasswordpanel.h"

#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include <limits>

namespace {

void passwordSizes(benchmark::internal::Benchmark* b)
{
    if (CgBench::smoke()) {
        b->Arg(1000);
        return;
    }
    b->Arg(1000)->Arg(10000)->Arg(100000);
}

/// A password of \a n characters that scores Medium: long, both cases, no digit.
QString longPassword(int n)
{
    QString s(n, QLatin1Char('a'));
    s[0] = QLatin1Char('B');
    return s;
}

/// Types '!' and erases it again, one keystroke per iteration, each one painted.
void typeAtTheEnd(benchmark::State& state, QLineEdit* edit)
{
    edit->setFocus();
    edit->end(false);
    QApplication::processEvents();
    bool typed = false;
    for (auto _ : state) {
        const int key = typed ? Qt::Key_Backspace : Qt::Key_Exclam;
        const QString text = typed ? QString() : QStringLiteral("!");
        QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier, text);
        QKeyEvent release(QEvent::KeyRelease, key, Qt::NoModifier, text);
        QApplication::sendEvent(edit, &press);
        QApplication::sendEvent(edit, &release);
        edit->repaint();
        typed = !typed;
    }
    state.counters["length"] = double(edit->text().size());
}

void BM_QLineEdit_PasswordKeystroke(benchmark::State& state)
{
    QWidget window;
    auto* layout = new QVBoxLayout(&window);
    auto* edit = new QLineEdit;
    edit->setEchoMode(QLineEdit::Password);
    edit->setMaxLength(std::numeric_limits<int>::max());
    edit->setText(longPassword(int(state.range(0))));
    layout->addWidget(edit);
    window.show();
    typeAtTheEnd(state, edit);
}

void BM_EPasswordPanel_Keystroke(benchmark::State& state)
{
    QWidget window;
    auto* layout = new QVBoxLayout(&window);
    auto* ok = new QPushButton(QStringLiteral("OK"));
    auto* panel = new EPasswordPanel(nullptr, nullptr, EPasswordPanel::High, ok);
    panel->setPassword(longPassword(int(state.range(0))));
    layout->addWidget(panel);
    layout->addWidget(ok);
    window.show();
    typeAtTheEnd(state, panel->passwordPair->getEditBox());
}

void BM_GetStrength(benchmark::State& state)
{
    QString s = longPassword(int(state.range(0)));
    for (auto _ : state)
        benchmark::DoNotOptimize(getStrength(s));
}

} // namespace

BENCHMARK(BM_QLineEdit_PasswordKeystroke)->Apply(passwordSizes)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_EPasswordPanel_Keystroke)->Apply(passwordSizes)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_GetStrength)->Apply(passwordSizes)->Unit(benchmark::kMicrosecond);
