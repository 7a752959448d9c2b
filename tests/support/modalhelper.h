// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#pragma once

#include <QElapsedTimer>
#include <QList>
#include <QMessageBox>
#include <QPointer>
#include <QString>
#include <QStringList>

#include <functional>
#include <initializer_list>
#include <memory>
#include <vector>

class QTimer;
class QWidget;

/// What the helper saw of one modal box before it answered it.
struct ModalSeen
{
    bool found = false;
    QString title;                 ///< windowTitle()
    QString text;                  ///< QMessageBox::text()
    QMessageBox::Icon icon = QMessageBox::NoIcon;
    QStringList buttons;           ///< visible push button texts without the '&' accelerator marks
    QList<QMessageBox::StandardButton> standardButtons; ///< a QMessageBox's visible standard buttons
    QMessageBox::StandardButton defaultStandardButton = QMessageBox::NoButton;
    const QObject* parent = nullptr; ///< for comparison only: the box is gone when you look
};

/// Answers modal boxes that code under test opens: it polls for the active modal widget, records
/// what the box shows and presses the chosen button or key.
///
/// Schedule the answer before the blocking call, then look at what was seen:
/// \code
/// ModalAnswerer answer(QMessageBox::Yes);
/// const bool yes = EMessage::ask(nullptr, QStringLiteral("Go on?"));
/// QVERIFY2(answer.done(), qPrintable(answer.error()));
/// QCOMPARE(answer.seen().title, QStringLiteral("Question"));
/// \endcode
/// A chain answers several boxes in turn:
/// `ModalAnswerer answer({ModalAnswer::key(Qt::Key_Escape), ModalAnswer::button(QMessageBox::Ok)});`
/// If no box appears within the timeout, or a box does not close after its answer, the helper stops,
/// records why in error() and closes a stuck box, so a test fails instead of hanging; after a failure
/// it closes (with -1) every box that still appears while it lives.
/// Keep one answerer alive at a time: two would race for the same box.
class ModalAnswer
{
public:
    enum Kind { Button, Key, Call };

    /// Presses a QMessageBox's standard button.
    static ModalAnswer button(QMessageBox::StandardButton b);
    /// Sends the key to the box's focus widget (Qt::Key_Escape, Qt::Key_Return, ...).
    static ModalAnswer key(Qt::Key key);
    /// Calls \a action with the box; the action must close it (or leave the helper to report).
    static ModalAnswer call(std::function<void(QWidget*)> action);

    Kind kind = Button;
    QMessageBox::StandardButton standard = QMessageBox::NoButton;
    Qt::Key keyCode = Qt::Key_unknown;
    std::function<void(QWidget*)> action;
};

class ModalAnswerer
{
public:
    static constexpr int defaultTimeout = 5000;

    explicit ModalAnswerer(QMessageBox::StandardButton b, int timeoutMs = defaultTimeout);
    explicit ModalAnswerer(const ModalAnswer& answer, int timeoutMs = defaultTimeout);
    /// Answers one box per entry, in order.
    ModalAnswerer(std::initializer_list<ModalAnswer> chain, int timeoutMs = defaultTimeout);
    ~ModalAnswerer();
    ModalAnswerer(const ModalAnswerer&) = delete;
    ModalAnswerer& operator=(const ModalAnswerer&) = delete;

    /// The box answered by entry \a index (an empty record with found == false if none yet).
    const ModalSeen& seen(int index = 0) const;
    /// Number of boxes answered so far.
    int count() const { return int(m_seen.size()); }
    /// True when every answer of the chain was given and its box closed.
    bool done() const;
    /// Why the helper is not done: a timeout, a button that was not there, a box that stayed open.
    QString error() const;
    /// Runs the event loop until done() or until the helper gave up; returns done().
    bool wait(int timeoutMs = defaultTimeout);

private:
    void tick();
    void answer(QWidget* box, const ModalAnswer& a);
    void fail(const QString& why);

    std::vector<ModalAnswer> m_chain;
    std::vector<ModalSeen> m_seen;
    std::unique_ptr<QTimer> m_timer;
    QElapsedTimer m_clock;
    QPointer<QWidget> m_closing;   // answered, waiting for it to disappear
    bool m_closingArmed = false;
    QString m_error;
    int m_timeout = defaultTimeout;
};
