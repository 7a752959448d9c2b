// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
// ESplitter: pane sizes survive hiding and showing the splitter and a restart of the gallery.
#include "gallery.h"

#include "eboxlayout.h"
#include "esettings.h"
#include "esplitter.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTimer>
#include <QVBoxLayout>

namespace {

const QString group()
{
    return QStringLiteral("GallerySplitter");
}

QString listText(const QList<int>& list)
{
    QStringList parts;
    for (int v : list)
        parts << QString::number(v);
    return parts.isEmpty() ? QStringLiteral("none") : parts.join(QStringLiteral(", "));
}

class SplitterPage : public QWidget
{
public:
    SplitterPage()
    {
        auto* layout = new EVRootBoxLayout(this);
        auto* intro = new QLabel(QStringLiteral("Drag the gradient handles, hide the splitter and show it again, or "
                                                "restart the gallery: the panes keep their sizes. Sizes are saved "
                                                "after every move under [GallerySplitter]."),
                                 this);
        intro->setWordWrap(true);
        layout->addWidget(intro);

        auto* buttons = new EHBoxLayout;
        auto* toggleSplitter = new QPushButton(QStringLiteral("Hide splitter"), this);
        toggleSplitter->setObjectName(QStringLiteral("toggleSplitter"));
        toggleSplitter->setCheckable(true);
        auto* togglePane = new QPushButton(QStringLiteral("Hide folder pane"), this);
        togglePane->setObjectName(QStringLiteral("togglePane"));
        togglePane->setCheckable(true);
        auto* reset = new QPushButton(QStringLiteral("Reset sizes"), this);
        reset->setObjectName(QStringLiteral("reset"));
        buttons->addWidget(toggleSplitter);
        buttons->addWidget(togglePane);
        buttons->addWidget(reset);
        buttons->addStretch(1);
        layout->addLayout(buttons);

        outer = new ESplitter(Qt::Horizontal, this);
        outer->setObjectName(QStringLiteral("outer"));
        outer->setHandleWidth(7);
        auto* folders = new QListWidget(outer);
        folders->addItems({QStringLiteral("Inbox"), QStringLiteral("Policies"), QStringLiteral("Certificates"),
                           QStringLiteral("Logs")});
        inner = new ESplitter(Qt::Vertical, outer);
        inner->setObjectName(QStringLiteral("inner"));
        inner->setHandleWidth(7);
        auto* list = new QListWidget(inner);
        for (int i = 1; i <= 20; ++i)
            list->addItem(QStringLiteral("Event %1").arg(i));
        new QPlainTextEdit(QStringLiteral("Details of the selected event."), inner);
        outer->setChildrenCollapsible(false);
        layout->addWidget(outer, 1);

        status = new QLabel(this);
        status->setObjectName(QStringLiteral("status"));
        layout->addWidget(status);

        defaults();
        {
            ESettings s(group());
            outer->loadState(s, "Outer");
            inner->loadState(s, "Inner");
        }

        connect(outer, &QSplitter::splitterMoved, this, [this] { save(); });
        connect(inner, &QSplitter::splitterMoved, this, [this] { save(); });
        connect(toggleSplitter, &QPushButton::toggled, this, [this, toggleSplitter](bool hide) {
            outer->setVisible(!hide);
            toggleSplitter->setText(hide ? QStringLiteral("Show splitter") : QStringLiteral("Hide splitter"));
            // While hidden the splitter saves the sizes it had when it was hidden.
            save();
        });
        connect(togglePane, &QPushButton::toggled, this, [togglePane, folders](bool hide) {
            folders->setVisible(!hide);
            togglePane->setText(hide ? QStringLiteral("Show folder pane") : QStringLiteral("Hide folder pane"));
        });
        connect(reset, &QPushButton::clicked, this, [this] {
            defaults();
            save();
        });
    }

protected:
    void showEvent(QShowEvent* e) override
    {
        QWidget::showEvent(e);
        // A splitter that has never been shown has no sizes to save; it has once the page is laid out.
        QTimer::singleShot(0, this, [this] { save(); });
    }

private:
    void defaults()
    {
        outer->setSizes({200, 560});
        inner->setSizes({360, 160});
    }

    void save()
    {
        ESettings s(group());
        outer->saveState(s, "Outer");
        inner->saveState(s, "Inner");
        QList<int> storedOuter;
        QList<int> storedInner;
        ESettings::getList("Outer", storedOuter, s);
        ESettings::getList("Inner", storedInner, s);
        status->setText(QStringLiteral("Stored under [GallerySplitter]: Outer [%1], Inner [%2]%3")
                            .arg(listText(storedOuter), listText(storedInner),
                                 outer->isHidden() ? QStringLiteral(" (splitter hidden)") : QString()));
    }

    ESplitter* outer = nullptr;
    ESplitter* inner = nullptr;
    QLabel* status = nullptr;
};

} // namespace

GALLERY_PAGE(41, "splitter", "Splitter", [] { return new SplitterPage; });
