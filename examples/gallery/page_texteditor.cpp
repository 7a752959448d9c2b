// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
// EPlainTextEdit: line numbers, the current line, Find (Ctrl+F, F3) and Go to Line (Ctrl+G), and a
// 200,000-line text to feel the speed.
#include "gallery.h"

#include "common_gui_loc.h"
#include "eboxlayout.h"
#include "ebutton.h"
#include "echeckbox.h"
#include "eplaintextedit.h"

#include <QElapsedTimer>
#include <QLabel>

namespace {

/// Lines of a made-up filter policy, numbered so that a search or a jump is easy to check by eye.
QString generatedText(int lines)
{
    static const char* const actions[] = {"allow", "deny", "allow", "log"};
    static const char* const protocols[] = {"tcp", "udp", "icmp"};
    QString text;
    text.reserve(lines * 64);
    for (int i = 1; i <= lines; ++i) {
        text += QStringLiteral("rule %1 %2 %3 from 10.%4.%5.0/24 to host-%6.lab.example.net port %7\n")
                    .arg(i, 6, 10, QLatin1Char('0'))
                    .arg(QLatin1String(actions[i % 4]))
                    .arg(QLatin1String(protocols[i % 3]))
                    .arg((i >> 8) & 255)
                    .arg(i & 255)
                    .arg(i % 1000, 4, 10, QLatin1Char('0'))
                    .arg(i % 7 == 0 ? 22 : 443);
    }
    text.chop(1);
    return text;
}

} // namespace

class TextEditorPage : public QWidget
{
    Q_OBJECT
public:
    TextEditorPage()
    {
        auto* root = new EVRootBoxLayout(this);
        auto* intro = new QLabel(QStringLiteral("An EPlainTextEdit: the gutter numbers the lines, the current line "
                                                "is highlighted. Ctrl+F opens the find dialog, F3 finds the next "
                                                "match with the dialog closed, and at the end it offers to start "
                                                "over; Ctrl+G goes to a line. The find options are remembered "
                                                "under [EPlainTextEdit] and [EFindOwner]."),
                                 this);
        intro->setWordWrap(true);
        root->addWidget(intro);

        auto* row = new EHBoxLayout;
        auto* find = new EButton(LCQT__Find, this);
        auto* next = new EButton(LCQT__Find_Next, this);
        auto* line = new EButton(LCQT__Go_to_Line, this);
        auto* load = new EButton(QStringLiteral("Load &200,000 lines"), this);
        load->setObjectName(QStringLiteral("loadLarge"));
        auto* readOnly = new ECheckBox(QStringLiteral("&Read-only"), this);
        row->addWidget(find);
        row->addWidget(next);
        row->addWidget(line);
        row->addWidget(load);
        row->addWidget(readOnly);
        row->addStretch(1);
        root->addLayout(row);

        editor = new EPlainTextEdit(true);
        editor->setObjectName(QStringLiteral("editor"));
        editor->setText(generatedText(300));
        root->addWidget(editor, 1);

        status = new QLabel(this);
        status->setObjectName(QStringLiteral("status"));
        root->addWidget(status);
        showState(QStringLiteral("Generated text"), -1);

        connect(find, &QPushButton::clicked, editor, &EPlainTextEdit::findFirst);
        connect(next, &QPushButton::clicked, editor, &EPlainTextEdit::findNext);
        connect(line, &QPushButton::clicked, editor, &EPlainTextEdit::goToLine);
        connect(load, &QPushButton::clicked, this, &TextEditorPage::loadLarge);
        connect(readOnly, &QCheckBox::toggled, editor, [this](bool on) {
            editor->setReadOnly(on); // the highlight follows at the next cursor move
        });
        connect(editor->document(), &QTextDocument::modificationChanged, this, [this](bool modified) {
            status->setText(modified ? state + QStringLiteral(" (modified)") : state);
        });
    }

private slots:
    void loadLarge()
    {
        const QString text = generatedText(200000);
        QElapsedTimer timer;
        timer.start();
        editor->setText(text);
        showState(QStringLiteral("200,000 lines"), timer.elapsed());
    }

private:
    void showState(const QString& what, qint64 ms)
    {
        state = QStringLiteral("%1: %2 lines").arg(what).arg(editor->blockCount());
        if (ms >= 0)
            state += QStringLiteral(", shown in %1 ms").arg(ms);
        status->setText(state);
    }

    EPlainTextEdit* editor = nullptr;
    QLabel* status = nullptr;
    QString state;
};

GALLERY_PAGE(52, "texteditor", "Text editor", [] { return new TextEditorPage; });

#include "page_texteditor.moc"
