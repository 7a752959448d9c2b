// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#include "gallery.h"

#include "platform/common_core.h"
#include "eboxlayout.h"
#include "emessage.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QVBoxLayout>

#include <functional>
#include <new>
#include <string>

namespace {

QString buttonName(int result)
{
    switch (result) {
    case QMessageBox::Ok: return QStringLiteral("OK");
    case QMessageBox::Cancel: return QStringLiteral("Cancel");
    case QMessageBox::Yes: return QStringLiteral("Yes");
    case QMessageBox::No: return QStringLiteral("No");
    case QMessageBox::YesToAll: return QStringLiteral("Yes to All");
    case QMessageBox::NoToAll: return QStringLiteral("No to All");
    default: return QStringLiteral("0x%1").arg(result, 0, 16);
    }
}

class MessagesPage : public QWidget
{
public:
    MessagesPage()
    {
        auto* root = new EVRootBoxLayout(this);

        auto* boxes = new QGroupBox(QStringLiteral("Boxes"), this);
        auto* boxGrid = new QGridLayout(boxes);
        auto* errors = new QGroupBox(QStringLiteral("Errors from other layers"), this);
        auto* errorGrid = new QGridLayout(errors);
        auto* collect = new QGroupBox(QStringLiteral("Cumulative mode"), this);
        auto* collectLayout = new QVBoxLayout(collect);

        result = new QLabel(QStringLiteral("Last result: none yet"), this);
        result->setObjectName(QStringLiteral("lastResult"));

        const QString question = QStringLiteral("Replace the file \"policy.lsp\"?");
        int n = 0;
        auto addBox = [&](const char* caption, std::function<QString()> show) {
            addButton(boxGrid, n++, caption, std::move(show));
        };
        addBox("info", [] { EMessage::info(nullptr, QStringLiteral("The policy was saved.")); return QStringLiteral("(none)"); });
        addBox("erro", [] { EMessage::erro(nullptr, QStringLiteral("The policy could not be saved.")); return QStringLiteral("(none)"); });
        addBox("warn", [] {
            return QString::fromLatin1(EMessage::warn(nullptr, QStringLiteral("The old keys will be deleted.")) ? "true" : "false");
        });
        addBox("ask", [question] { return QString::fromLatin1(EMessage::ask(nullptr, question) ? "true" : "false"); });
        addBox("ync", [question] { return buttonName(EMessage::ync(nullptr, question)); });
        addBox("asknoall", [question] { return buttonName(EMessage::asknoall(nullptr, question)); });
        addBox("askyesall", [question] { return buttonName(EMessage::askyesall(nullptr, question)); });
        addBox("askall", [question] { return buttonName(EMessage::askall(nullptr, question)); });

        n = 0;
        addButton(errorGrid, n++, "erro(std::string)", [] {
            EMessage::erro(nullptr, std::string("Файл \"политика.lsp\" не найден (UTF-8 from std::string)"));
            return QStringLiteral("(none)");
        });
        addButton(errorGrid, n++, "erro(TTT)", [] {
            TTT error("Cannot open file policy.lsp: No such file or directory");
            error.add("Cannot load the policy");
            EMessage::erro(nullptr, error);
            return QStringLiteral("(none)");
        });
        addButton(errorGrid, n++, "erro(std::bad_alloc)", [] {
            EMessage::erro(nullptr, std::bad_alloc());
            return QStringLiteral("(none)");
        });

        auto* explain = new QLabel(QStringLiteral("Collects three errors without a box, then shows them in one."), collect);
        explain->setWordWrap(true);
        collectLayout->addWidget(explain);
        auto* batch = new QPushButton(QStringLiteral("Import three files"), collect);
        batch->setObjectName(QStringLiteral("cumulative"));
        collectLayout->addWidget(batch);
        connect(batch, &QPushButton::clicked, this, [this] {
            EMessage::setCumulativeErrorMode();
            EMessage::erro(nullptr, QStringLiteral("a.cer: the file is empty"));
            EMessage::erro(nullptr, std::string("b.cer: the certificate has expired"));
            EMessage::erro(nullptr, TTT("c.cer: unknown format"));
            const QString all = EMessage::getCumulativeError();
            result->setText(QStringLiteral("Last result: %1 error(s) collected").arg(all.split(QStringLiteral("\r\n")).size()));
            EMessage::erro(this, all);
        });

        root->addWidget(boxes);
        root->addWidget(errors);
        root->addWidget(collect);
        root->addWidget(result);
        root->addStretch(1);
    }

private:
    void addButton(QGridLayout* grid, int index, const char* caption, std::function<QString()> show)
    {
        auto* b = new QPushButton(QString::fromUtf8(caption), grid->parentWidget());
        b->setObjectName(QString::fromUtf8(caption));
        grid->addWidget(b, index / 4, index % 4);
        connect(b, &QPushButton::clicked, this, [this, caption, show] {
            const QString r = show();
            result->setText(QStringLiteral("Last result of %1: %2").arg(QString::fromUtf8(caption), r));
        });
    }

    QLabel* result = nullptr;
};

} // namespace

GALLERY_PAGE(20, "messages", "Message boxes", [] { return new MessagesPage; });
