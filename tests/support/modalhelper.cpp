// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#include "modalhelper.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDialog>
#include <QPushButton>
#include <QTest>
#include <QTimer>

namespace {

constexpr int pollInterval = 10;

ModalSeen record(QWidget* box)
{
    ModalSeen s;
    s.found = true;
    s.title = box->windowTitle();
    s.parent = box->parentWidget();
    auto* mb = qobject_cast<QMessageBox*>(box);
    if (mb) {
        s.text = mb->text();
        s.icon = mb->icon();
        s.defaultStandardButton = mb->standardButton(mb->defaultButton());
    }
    const auto all = box->findChildren<QPushButton*>();
    for (QPushButton* b : all) {
        if (!b->isVisibleTo(box))
            continue;
        s.buttons.append(b->text().remove(QLatin1Char('&')));
        if (mb)
            s.standardButtons.append(mb->standardButton(b));
    }
    return s;
}

// Closes a box that the helper could not answer, so that its exec() returns -1.
void closeStuck(QWidget* box)
{
    if (auto* d = qobject_cast<QDialog*>(box))
        d->done(-1);
    else
        box->close();
}

} // namespace

ModalAnswer ModalAnswer::button(QMessageBox::StandardButton b)
{
    ModalAnswer a;
    a.kind = Button;
    a.standard = b;
    return a;
}

ModalAnswer ModalAnswer::key(Qt::Key key)
{
    ModalAnswer a;
    a.kind = Key;
    a.keyCode = key;
    return a;
}

ModalAnswer ModalAnswer::call(std::function<void(QWidget*)> action)
{
    ModalAnswer a;
    a.kind = Call;
    a.action = std::move(action);
    return a;
}

ModalAnswerer::ModalAnswerer(QMessageBox::StandardButton b, int timeoutMs)
    : ModalAnswerer({ModalAnswer::button(b)}, timeoutMs)
{
}

ModalAnswerer::ModalAnswerer(const ModalAnswer& answer, int timeoutMs)
    : ModalAnswerer({answer}, timeoutMs)
{
}

ModalAnswerer::ModalAnswerer(std::initializer_list<ModalAnswer> chain, int timeoutMs)
    : m_chain(chain), m_timer(std::make_unique<QTimer>()), m_timeout(timeoutMs)
{
    m_timer->setInterval(pollInterval);
    QObject::connect(m_timer.get(), &QTimer::timeout, m_timer.get(), [this] { tick(); });
    m_clock.start();
    if (!m_chain.empty())
        m_timer->start();
}

ModalAnswerer::~ModalAnswerer() = default;

void ModalAnswerer::tick()
{
    QWidget* box = QApplication::activeModalWidget();
    if (!m_error.isEmpty()) {
        // The test has failed already; keep it from hanging in a box that comes too late.
        if (box)
            closeStuck(box);
        return;
    }
    if (m_closingArmed) {
        if (m_closing && m_closing->isVisible()) {
            if (m_clock.elapsed() > m_timeout) {
                fail(QStringLiteral("the box \"%1\" did not close after its answer").arg(m_closing->windowTitle()));
                closeStuck(m_closing);
            }
            return;
        }
        m_closingArmed = false;
        m_clock.restart();
        if (m_seen.size() == m_chain.size()) {
            m_timer->stop();
            return;
        }
        box = QApplication::activeModalWidget();
    }
    if (!box) {
        if (m_clock.elapsed() > m_timeout)
            fail(QStringLiteral("no modal box appeared within %1 ms (answer %2 of %3)")
                     .arg(m_timeout)
                     .arg(m_seen.size() + 1)
                     .arg(m_chain.size()));
        return;
    }
    m_seen.push_back(record(box));
    m_closing = box;
    m_closingArmed = true;
    m_clock.restart();
    answer(box, m_chain[m_seen.size() - 1]);
}

void ModalAnswerer::answer(QWidget* box, const ModalAnswer& a)
{
    switch (a.kind) {
    case ModalAnswer::Button: {
        auto* mb = qobject_cast<QMessageBox*>(box);
        if (QAbstractButton* b = mb ? mb->button(a.standard) : nullptr) {
            b->click();
        } else {
            fail(QStringLiteral("the box \"%1\" has no standard button 0x%2 (buttons: %3)")
                     .arg(box->windowTitle())
                     .arg(int(a.standard), 0, 16)
                     .arg(m_seen.back().buttons.join(QStringLiteral(", "))));
            closeStuck(box);
        }
        return;
    }
    case ModalAnswer::Key: {
        QWidget* target = box->focusWidget();
        QTest::keyClick(target && box->isAncestorOf(target) ? target : box, a.keyCode);
        return;
    }
    case ModalAnswer::Call:
        if (a.action)
            a.action(box);
        return;
    }
}

void ModalAnswerer::fail(const QString& why)
{
    if (m_error.isEmpty())
        m_error = why;
}

const ModalSeen& ModalAnswerer::seen(int index) const
{
    static const ModalSeen nothing;
    if (index < 0 || index >= int(m_seen.size()))
        return nothing;
    return m_seen[size_t(index)];
}

bool ModalAnswerer::done() const
{
    const bool lastClosed = !m_closingArmed || !m_closing || !m_closing->isVisible();
    return m_error.isEmpty() && m_seen.size() == m_chain.size() && lastClosed;
}

QString ModalAnswerer::error() const
{
    if (!m_error.isEmpty() || done())
        return m_error;
    if (m_closingArmed && m_closing && m_closing->isVisible())
        return QStringLiteral("box %1 was answered but has not closed yet").arg(m_seen.size());
    return QStringLiteral("still waiting for box %1 of %2").arg(m_seen.size() + 1).arg(m_chain.size());
}

bool ModalAnswerer::wait(int timeoutMs)
{
    QElapsedTimer clock;
    clock.start();
    while (!done() && m_error.isEmpty() && m_timer->isActive() && clock.elapsed() < timeoutMs)
        QTest::qWait(pollInterval);
    return done();
}
