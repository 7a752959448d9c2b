// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#include "gallery.h"

#include "eboxlayout.h"
#include "ehexconverter.h"
#include "eutils.h"

#include <QApplication>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace {

class UtilitiesPage : public QWidget
{
public:
    UtilitiesPage()
    {
        auto* root = new EVRootBoxLayout(this);
        root->addWidget(makeHexGroup());
        root->addWidget(makeCursorGroup());
        root->addStretch(1);
    }

private:
    QWidget* makeHexGroup()
    {
        auto* group = new QGroupBox(QStringLiteral("Hex converter"), this);
        auto* form = new QFormLayout(group);
        input = new QLineEdit(QStringLiteral("Hello"), group);
        input->setObjectName(QStringLiteral("hexInput"));
        form->addRow(QStringLiteral("Input"), input);

        auto* buttons = new EHBoxLayout;
        auto* toHex = new QPushButton(QStringLiteral("Text → hex"), group);
        toHex->setObjectName(QStringLiteral("toHex"));
        auto* toText = new QPushButton(QStringLiteral("Hex → text"), group);
        toText->setObjectName(QStringLiteral("toText"));
        buttons->addWidget(toHex);
        buttons->addWidget(toText);
        buttons->addStretch(1);
        form->addRow(QString(), buttons);

        output = new QLabel(group);
        output->setObjectName(QStringLiteral("hexOutput"));
        output->setTextInteractionFlags(Qt::TextSelectableByMouse);
        form->addRow(QStringLiteral("Result"), output);
        auto* note = new QLabel(QStringLiteral("Letters count from zero: \"0A\" gives 00, \"1F\" gives 15."), group);
        note->setWordWrap(true);
        form->addRow(QString(), note);

        connect(toHex, &QPushButton::clicked, this, [this] {
            QByteArray bytes;
            QString hex;
            EHexConverter::string2array(input->text(), bytes);
            EHexConverter::array2hex(bytes, hex);
            output->setText(hex.isEmpty() ? QStringLiteral("(empty)") : hex);
        });
        connect(toText, &QPushButton::clicked, this, [this] {
            QByteArray bytes;
            if (!EHexConverter::hex2array(input->text(), bytes)) {
                output->setText(QStringLiteral("Refused: odd length or a character that is not a hex digit"));
                return;
            }
            QString text;
            const int replaced = EHexConverter::array2string(bytes, text, QLatin1Char('.'));
            output->setText(QStringLiteral("%1   (%2 byte(s), %3 unprintable shown as '.')")
                                .arg(text).arg(bytes.size()).arg(replaced));
        });
        toHex->click();
        return group;
    }

    QWidget* makeCursorGroup()
    {
        auto* group = new QGroupBox(QStringLiteral("Wait cursor"), this);
        auto* layout = new EVGroupBoxLayout(group);
        auto* row = new EHBoxLayout;
        const struct { const char* caption; const char* name; void (*call)(); } actions[] = {
            {"Nest", "nest", [] { EUtils::waitCursor(true); }},
            {"Unnest", "unnest", [] { EUtils::waitCursor(false); }},
            {"Suspend", "suspend", [] { EUtils::suspendWaitCursor(true); }},
            {"Resume", "resume", [] { EUtils::suspendWaitCursor(false); }},
        };
        for (const auto& a : actions) {
            auto* b = new QPushButton(QString::fromUtf8(a.caption), group);
            b->setObjectName(QString::fromUtf8(a.name));
            row->addWidget(b);
            auto call = a.call;
            connect(b, &QPushButton::clicked, this, [this, call] {
                call();
                showCounters();
            });
        }
        row->addStretch(1);
        layout->addLayout(row);
        counters = new QLabel(group);
        counters->setObjectName(QStringLiteral("cursorCounters"));
        layout->addWidget(counters);
        auto* note = new QLabel(QStringLiteral("Keep the calls balanced: the counters are not clamped."), group);
        layout->addWidget(note);
        showCounters();
        return group;
    }

    void showCounters()
    {
        const QCursor* c = QApplication::overrideCursor();
        counters->setText(QStringLiteral("waits: %1   suspensions: %2   cursor: %3")
                              .arg(EUtils::getWaitCursorCounter())
                              .arg(EUtils::getWaitCursorSuspendCounter())
                              .arg(c && c->shape() == Qt::WaitCursor ? QStringLiteral("wait") : QStringLiteral("normal")));
    }

    QLineEdit* input = nullptr;
    QLabel* output = nullptr;
    QLabel* counters = nullptr;
};

} // namespace

GALLERY_PAGE(25, "utilities", "Utilities", [] { return new UtilitiesPage; });
