// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#include "gallery.h"

#include "common_gui_loc.h"
#include "ebrowser.h"
#include "eboxlayout.h"
#include "ebutton.h"
#include "ebuttonpanel.h"
#include "efiledialog.h"
#include "egroupbox.h"
#include "ehelpbutton.h"
#include "eintdialog.h"
#include "esettings.h"
#include "estrdialog.h"

#include <QDir>
#include <QFrame>
#include <QLabel>

namespace {

/// The file dialogs of this page share one remembered directory under this state name.
const char* const fileState = "GalleryFiles";

class DialogsPage : public QWidget
{
public:
    DialogsPage()
    {
        // A dialog's margins around two columns side by side.
        auto* root = new EBoxLayout(QBoxLayout::LeftToRight, this, 8, 8);
        auto* left = new EVBoxLayout;
        auto* right = new EVBoxLayout;
        root->addLayout(left, 1);
        root->addLayout(right, 1);

        left->addWidget(makePanels());
        right->addWidget(makeInputs());
        right->addWidget(makeFiles());
        right->addWidget(makeHelp());
        right->addStretch(1);

        // F1 anywhere on this page opens the page's own help.
        EBrowser::setHelp(this, "dialogs.html");
    }

private:
    QWidget* makePanels()
    {
        auto* box = new EGroupBox(QStringLiteral("Button panels"));
        auto* signal = new QLabel(QStringLiteral("Last signal: none yet"));
        signal->setObjectName(QStringLiteral("panelSignal"));

        using P = EButtonPanel;
        const struct
        {
            const char* title;
            EButtonPanel::Buttons buttons;
        } variants[] = {
            {"Help | Cancel | OK | Back (any order)", P::Help | P::Cancel | P::OK | P::Back},
            {"Finish | Save", P::Finish | P::Save},
            {"Back | Next | Cancel (wizard page)", P::Back | P::Next | P::Cancel},
            {"Close | Help", P::Close | P::Help},
        };
        for (const auto& v : variants) {
            box->addWidget(new QLabel(QString::fromUtf8(v.title)));
            auto* panel = new EButtonPanel(box, v.buttons, "dialogs.html");
            box->addWidget(panel);
            report(panel, QString::fromUtf8(v.title), signal);
        }

        box->addWidget(new QLabel(QStringLiteral("OK | Cancel, then addButton(\"&Apply\", false)")));
        auto* extended = new EButtonPanel(box);
        QPushButton* apply = extended->addButton(QStringLiteral("&Apply"), false);
        connect(apply, &QPushButton::clicked, signal, [signal] {
            signal->setText(QStringLiteral("Last signal: Apply clicked (the caller's own connection)"));
        });
        box->addWidget(extended);
        report(extended, QStringLiteral("OK | Cancel + Apply"), signal);

        box->addWidget(new QLabel(QStringLiteral("Save | Cancel, enableOK() from a button")));
        auto* guarded = new EButtonPanel(box, P::Save | P::Cancel);
        auto* toggle = new EButton(QStringLiteral("Toggle &Save"));
        toggle->setObjectName(QStringLiteral("toggleSave"));
        connect(toggle, &QPushButton::clicked, guarded,
                [guarded] { guarded->enableOK(!guarded->okButton->isEnabled()); });
        auto* guardRow = new EHBoxLayout;
        guardRow->addWidget(guarded, 1);
        guardRow->addWidget(toggle);
        box->addLayout(guardRow);
        report(guarded, QStringLiteral("Save | Cancel"), signal);

        box->addSpacing(8);
        box->addWidget(signal);
        box->addStretch(1);
        return box;
    }

    static void report(EButtonPanel* panel, const QString& name, QLabel* label)
    {
        const auto show = [label, name](const char* what) {
            return [label, name, what] {
                label->setText(QStringLiteral("Last signal: %1() from %2").arg(QString::fromLatin1(what), name));
            };
        };
        connect(panel, &EButtonPanel::ok, label, show("ok"));
        connect(panel, &EButtonPanel::cancel, label, show("cancel"));
        connect(panel, &EButtonPanel::help, label, show("help"));
        connect(panel, &EButtonPanel::back, label, show("back"));
    }

    QWidget* makeInputs()
    {
        auto* box = new EGroupBox(QStringLiteral("Input dialogs"));

        auto* numberRow = new EHBoxLayout;
        auto* askNumber = new EButton(QStringLiteral("&Number..."));
        askNumber->setObjectName(QStringLiteral("askNumber"));
        auto* numberShown = new QLabel;
        numberShown->setObjectName(QStringLiteral("numberValue"));
        numberRow->addWidget(askNumber);
        numberRow->addWidget(numberShown, 1);
        box->addLayout(numberRow);

        auto* textRow = new EHBoxLayout;
        auto* askText = new EButton(QStringLiteral("&Text..."));
        askText->setObjectName(QStringLiteral("askText"));
        auto* textShown = new QLabel;
        textShown->setObjectName(QStringLiteral("textValue"));
        textRow->addWidget(askText);
        textRow->addWidget(textShown, 1);
        box->addLayout(textRow);

        const auto showNumber = [this, numberShown](const char* how) {
            numberShown->setText(QStringLiteral("Retries (1..10) = %1  %2").arg(retries).arg(QString::fromUtf8(how)));
        };
        const auto showText = [this, textShown](const char* how) {
            textShown->setText(QStringLiteral("Host = \"%1\"  %2").arg(host, QString::fromUtf8(how)));
        };
        showNumber("");
        showText("");
        connect(askNumber, &QPushButton::clicked, this, [this, showNumber] {
            EIntDialog dialog(this, QStringLiteral("Retries"), QStringLiteral("&Retries:"), 1, 10, retries);
            showNumber(dialog.exec() == QDialog::Accepted ? "(written back)" : "(cancelled, unchanged)");
        });
        connect(askText, &QPushButton::clicked, this, [this, showText] {
            EStrDialog dialog(this, QStringLiteral("Host"), QStringLiteral("&Host:"), host);
            showText(dialog.exec() == QDialog::Accepted ? "(written back)" : "(cancelled, unchanged)");
        });
        return box;
    }

    QWidget* makeFiles()
    {
        auto* box = new EGroupBox(QStringLiteral("File dialog"));
        auto* buttons = new EHBoxLayout;
        auto* open = new EButton(QStringLiteral("&Open..."));
        auto* save = new EButton(QStringLiteral("Sa&ve..."));
        auto* multi = new EButton(QStringLiteral("Open &several..."));
        open->setObjectName(QStringLiteral("openFile"));
        save->setObjectName(QStringLiteral("saveFile"));
        multi->setObjectName(QStringLiteral("openFiles"));
        buttons->addWidget(open);
        buttons->addWidget(save);
        buttons->addWidget(multi);
        buttons->addStretch(1);
        box->addLayout(buttons);

        chosen = new QLabel(QStringLiteral("Chosen: nothing yet"));
        chosen->setObjectName(QStringLiteral("chosenFile"));
        chosen->setWordWrap(true);
        chosen->setTextInteractionFlags(Qt::TextSelectableByMouse);
        startsIn = new QLabel;
        startsIn->setObjectName(QStringLiteral("startDirectory"));
        startsIn->setWordWrap(true);
        box->addWidget(chosen);
        box->addWidget(startsIn);
        showStart();

        connect(open, &QPushButton::clicked, this, [this] {
            QString filter;
            const QString name = EFileDialog::open(this, QString(), LCQT__Text_Files_txt_All_Files_All, nullptr,
                                                   &filter, fileState);
            showChoice(name.isEmpty() ? QStringList() : QStringList{name}, filter);
        });
        connect(save, &QPushButton::clicked, this, [this] {
            QString proposed = QStringLiteral("report.txt");
            QString filter;
            const QString name = EFileDialog::save(this, QString(), LCQT__Text_Files_txt_All_Files_All,
                                                   &proposed, &filter, fileState);
            showChoice(name.isEmpty() ? QStringList() : QStringList{name}, filter);
        });
        connect(multi, &QPushButton::clicked, this, [this] {
            QString filter;
            showChoice(EFileDialog::multi(this, QString(), LCQT__Text_Files_txt_All_Files_All, nullptr, &filter,
                                          fileState),
                       filter);
        });
        return box;
    }

    void showChoice(const QStringList& names, const QString& filter)
    {
        if (names.isEmpty())
            chosen->setText(QStringLiteral("Chosen: nothing (cancelled; the remembered directory stays)"));
        else
            chosen->setText(QStringLiteral("Chosen with \"%1\":\n%2")
                                .arg(filter, names.join(QLatin1Char('\n'))));
        showStart();
    }

    void showStart()
    {
        QString dir;
        {
            ESettings s(QStringLiteral("EFileDialog"));
            dir = s.value(QString::fromLatin1(fileState)).toString();
        }
        startsIn->setText(dir.isEmpty()
                              ? QStringLiteral("Next dialog starts in the binary directory (nothing remembered yet)")
                              : QStringLiteral("Next dialog starts in: %1").arg(QDir::toNativeSeparators(dir)));
    }

    QWidget* makeHelp()
    {
        auto* box = new EGroupBox(QStringLiteral("Help"));
        auto* text = new QLabel(QStringLiteral(
            "Press F1 anywhere on this page to open \"dialogs.html\" in the desktop's browser, or use the "
            "button for the start page. A language without its own pages gets the Russian ones."));
        text->setWordWrap(true);
        box->addWidget(text);
        auto* row = new EHBoxLayout;
        auto* help = new EHelpButton(nullptr, "index.html");
        row->addWidget(help);
        row->addStretch(1);
        box->addLayout(row);
        return box;
    }

    int retries = 3;
    QString host = QStringLiteral("gateway.example.org");
    QLabel* chosen = nullptr;
    QLabel* startsIn = nullptr;
};

} // namespace

GALLERY_PAGE(80, "dialogs", "Dialogs and help", [] { return new DialogsPage; });
