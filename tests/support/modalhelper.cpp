// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#include "modalhelper.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDialog>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QInputDialog>
#include <QLabel>
#include <QPushButton>
#include <QTest>
#include <QTimer>

#include <algorithm>

namespace {

constexpr int pollInterval = 10;

QString withoutAccelerators(QString s)
{
    // "&&" is a literal ampersand; a single '&' only marks the accelerator.
    s.replace(QLatin1String("&&"), QStringLiteral("\x01"));
    s.remove(QLatin1Char('&'));
    s.replace(QStringLiteral("\x01"), QStringLiteral("&"));
    return s;
}

QList<QPushButton*> visibleButtons(QWidget* box)
{
    QList<QPushButton*> result;
    const auto all = box->findChildren<QPushButton*>();
    for (QPushButton* b : all) {
        if (b->isVisibleTo(box))
            result.append(b);
    }
    // Visual order: rows from the top, then from the left.
    std::stable_sort(result.begin(), result.end(), [box](QPushButton* a, QPushButton* b) {
        const QPoint pa = a->mapTo(box, a->rect().center());
        const QPoint pb = b->mapTo(box, b->rect().center());
        if (pa.y() != pb.y())
            return pa.y() < pb.y();
        return pa.x() < pb.x();
    });
    return result;
}

QMessageBox::StandardButton standardOf(QWidget* box, QAbstractButton* b)
{
    if (auto* mb = qobject_cast<QMessageBox*>(box))
        return mb->standardButton(b);
    for (QWidget* p = b->parentWidget(); p && p != box; p = p->parentWidget()) {
        if (auto* bb = qobject_cast<QDialogButtonBox*>(p))
            return QMessageBox::StandardButton(int(bb->standardButton(b)));
    }
    return QMessageBox::NoButton;
}

QString keyName(Qt::Key key)
{
    return QKeySequence(key).toString(QKeySequence::PortableText);
}

ModalSeen record(QWidget* box)
{
    ModalSeen s;
    s.found = true;
    s.className = QString::fromLatin1(box->metaObject()->className());
    s.title = box->windowTitle();
    s.flags = box->windowFlags();
    s.parent = box->parentWidget();
    if (auto* mb = qobject_cast<QMessageBox*>(box)) {
        s.text = mb->text();
        s.informativeText = mb->informativeText();
        s.icon = mb->icon();
    } else if (auto* input = qobject_cast<QInputDialog*>(box)) {
        s.text = input->labelText();
    } else {
        const auto labels = box->findChildren<QLabel*>();
        for (QLabel* l : labels) {
            if (l->isVisibleTo(box) && !l->text().isEmpty()) {
                s.text = l->text();
                break;
            }
        }
    }
    QPushButton* def = nullptr;
    if (auto* mb = qobject_cast<QMessageBox*>(box))
        def = mb->defaultButton();
    for (QPushButton* b : visibleButtons(box)) {
        s.buttons.append(b->text());
        s.standardButtons.append(standardOf(box, b));
        if (!def && b->isDefault())
            def = b;
    }
    if (def) {
        s.defaultButton = def->text();
        s.defaultStandardButton = standardOf(box, def);
    }
    return s;
}

QAbstractButton* findButton(QWidget* box, const ModalAnswer& a)
{
    if (a.kind == ModalAnswer::Button) {
        if (auto* mb = qobject_cast<QMessageBox*>(box)) {
            if (QAbstractButton* b = mb->button(a.standard))
                return b;
        }
        const auto boxes = box->findChildren<QDialogButtonBox*>();
        for (QDialogButtonBox* bb : boxes) {
            if (QAbstractButton* b = bb->button(QDialogButtonBox::StandardButton(int(a.standard))))
                return b;
        }
        return nullptr;
    }
    const QString wanted = withoutAccelerators(a.buttonText);
    for (QPushButton* b : visibleButtons(box)) {
        if (b->text() == a.buttonText || withoutAccelerators(b->text()) == wanted)
            return b;
    }
    return nullptr;
}

} // namespace

QStringList ModalSeen::plainButtons() const
{
    QStringList result;
    for (const QString& b : buttons)
        result.append(withoutAccelerators(b));
    return result;
}

// ---------------------------------------------------------------------------------------------------

ModalAnswer ModalAnswer::button(QMessageBox::StandardButton b)
{
    ModalAnswer a;
    a.kind = Button;
    a.standard = b;
    return a;
}

ModalAnswer ModalAnswer::text(const QString& text)
{
    ModalAnswer a;
    a.kind = Text;
    a.buttonText = text;
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

// ---------------------------------------------------------------------------------------------------

ModalAnswerer::ModalAnswerer(QMessageBox::StandardButton b, int timeoutMs)
    : ModalAnswerer(ModalAnswer::button(b), timeoutMs)
{
}

ModalAnswerer::ModalAnswerer(Qt::Key key, int timeoutMs)
    : ModalAnswerer(ModalAnswer::key(key), timeoutMs)
{
}

ModalAnswerer::ModalAnswerer(const QString& buttonText, int timeoutMs)
    : ModalAnswerer(ModalAnswer::text(buttonText), timeoutMs)
{
}

ModalAnswerer::ModalAnswerer(const ModalAnswer& answer, int timeoutMs)
    : m_chain{answer}, m_timeout(timeoutMs)
{
    start();
}

ModalAnswerer::ModalAnswerer(std::initializer_list<ModalAnswer> chain, int timeoutMs)
    : m_chain(chain), m_timeout(timeoutMs)
{
    start();
}

ModalAnswerer::~ModalAnswerer() = default;

void ModalAnswerer::start()
{
    m_timer = std::make_unique<QTimer>();
    m_timer->setInterval(pollInterval);
    QObject::connect(m_timer.get(), &QTimer::timeout, m_timer.get(), [this] { tick(); });
    m_clock.start();
    if (m_chain.empty())
        return;
    m_timer->start();
}

QWidget* ModalAnswerer::currentModal()
{
    if (QWidget* w = QApplication::activeModalWidget())
        return w;
    const auto tops = QApplication::topLevelWidgets();
    for (QWidget* w : tops) {
        if (!w->isVisible())
            continue;
        if (qobject_cast<QMessageBox*>(w) || qobject_cast<QFileDialog*>(w))
            return w;
        if (qobject_cast<QDialog*>(w) && (w->isModal() || w->windowModality() != Qt::NonModal))
            return w;
    }
    return nullptr;
}

void ModalAnswerer::tick()
{
    if (!m_error.isEmpty()) {
        // The test has failed already; keep it from hanging in a box that comes too late.
        if (QWidget* late = currentModal())
            closeStuck(late);
        return;
    }
    if (m_closingArmed) {
        if (m_closing && m_closing->isVisible()) {
            if (m_clock.elapsed() > m_timeout) {
                QWidget* stuck = m_closing;
                fail(QStringLiteral("the box \"%1\" did not close after the answer (%2)")
                         .arg(stuck->windowTitle(), m_seen.back().answer));
                closeStuck(stuck);
            }
            return;
        }
        m_closingArmed = false;
        m_closing = nullptr;
        m_clock.restart();
        if (m_seen.size() == m_chain.size()) {
            m_timer->stop();
            return;
        }
    }

    QWidget* box = currentModal();
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
    answer(box, m_chain[m_seen.size() - 1], m_seen.back());
}

void ModalAnswerer::answer(QWidget* box, const ModalAnswer& a, ModalSeen& seen)
{
    switch (a.kind) {
    case ModalAnswer::Button:
    case ModalAnswer::Text: {
        QAbstractButton* b = findButton(box, a);
        if (!b) {
            seen.answer = a.kind == ModalAnswer::Text ? QStringLiteral("button %1").arg(a.buttonText)
                                                      : QStringLiteral("standard button 0x%1").arg(int(a.standard), 0, 16);
            fail(QStringLiteral("the box \"%1\" has no %2 (buttons: %3)")
                     .arg(seen.title, seen.answer, seen.buttons.join(QStringLiteral(", "))));
            closeStuck(box);
            return;
        }
        seen.answer = QStringLiteral("button %1").arg(b->text());
        b->click();
        return;
    }
    case ModalAnswer::Key: {
        seen.answer = QStringLiteral("key %1").arg(keyName(a.keyCode));
        QWidget* target = box->focusWidget();
        if (!target || !box->isAncestorOf(target))
            target = box;
        QTest::keyClick(target, a.keyCode);
        return;
    }
    case ModalAnswer::Call:
        seen.answer = QStringLiteral("call");
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

void ModalAnswerer::closeStuck(QWidget* box)
{
    if (auto* d = qobject_cast<QDialog*>(box))
        d->done(-1);
    else
        box->close();
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
    if (!m_error.isEmpty())
        return m_error;
    if (done())
        return QString();
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
