// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#include "gallery.h"

#include "common_gui_res.h"
#include "eboxlayout.h"
#include "egroupbox.h"
#include "emenuitem.h"
#include "epopupmenu.h"
#include "eradiogroup.h"
#include "eresource.h"
#include "etoolbar.h"

#include <QButtonGroup>
#include <QContextMenuEvent>
#include <QFrame>
#include <QKeySequence>
#include <QLabel>

#include <iterator>

namespace {

enum Command { CmdOpen = 1, CmdSave, CmdFind, CmdLock, CmdDelete, CmdHelp, CmdExport, CmdImport, CmdAbout };

const QString openText = QStringLiteral("Open");
const QString saveText = QStringLiteral("Save");
const QString findText = QStringLiteral("Find");
const QString lockText = QStringLiteral("Lock");
const QString deleteText = QStringLiteral("Delete");
const QString helpText = QStringLiteral("Help");
const QString lockTip = QStringLiteral("Checkable: stays pressed");
const QString deleteTip = QStringLiteral("Disabled by the application");
const QKeySequence findKeys(QStringLiteral("Ctrl+Shift+F"));

/// The area that opens a context menu and shows the id chosen in it.
class MenuArea : public QFrame
{
public:
    explicit MenuArea(QLabel* chosen)
        : chosen(chosen)
    {
        setFrameShape(QFrame::StyledPanel);
        setMinimumHeight(70);
        auto* layout = new EVBoxLayout(this, 8, 8);
        layout->addWidget(new QLabel(QStringLiteral("Right-click here (or press the menu key) for a context menu.")));
    }

protected:
    void contextMenuEvent(QContextMenuEvent* event) override
    {
        EPopupMenu menu(nullptr, QString(), QString());
        menu.insertItem(new EMenuItem(&menu, CmdOpen, Resource::getPixmap(CgIcon::TbOpen), QStringLiteral("&Open"), QString()));
        menu.insertItem(new EMenuItem(&menu, CmdFind, Resource::getPixmap(CgIcon::TbFind), QStringLiteral("&Find"), QString()));
        auto* lock = new EMenuItem(&menu, CmdLock, Resource::getPixmap(CgIcon::Lock), QStringLiteral("&Lock"), QString());
        lock->setCheckable(true);
        menu.insertItem(lock);
        menu.setItemChecked(CmdLock, locked);
        auto* more = new EPopupMenu(CmdExport * 100, Resource::getPixmap(CgIcon::Export), QStringLiteral("&More"),
                                    QStringLiteral("A sub-menu with its own icon"));
        more->setParent(&menu, more->windowFlags());
        more->insertItem(new EMenuItem(more, CmdExport, nullptr, QStringLiteral("&Export..."), QString()));
        more->insertItem(new EMenuItem(more, CmdImport, nullptr, QStringLiteral("&Import..."), QString()));
        menu.insertItem(more);
        menu.addSeparator();
        menu.insertItem(new EMenuItem(&menu, nullptr, QStringLiteral("No id (reads as nothing chosen)"), QString()));
        menu.setItemEnabled(CmdImport, false);

        const int id = menu.exec(event->globalPos());
        if (id == CmdLock)
            locked = !locked;
        chosen->setText(id < 0 ? QStringLiteral("Context menu: nothing chosen (-1)")
                               : QStringLiteral("Context menu: id %1").arg(id));
    }

private:
    QLabel* chosen = nullptr;
    bool locked = false;
};

class MenusPage : public QWidget
{
    Q_OBJECT
public:
    MenusPage()
    {
        auto* root = new EVBoxLayout(this);
        root->setContentsMargins(8, 8, 8, 8);

        last = new QLabel(QStringLiteral("Last command: none yet"));
        last->setObjectName(QStringLiteral("lastCommand"));

        static EToolBarItemData items[] = {
            {CmdOpen, CgIcon::TbOpen, &openText, SLOT(open()), nullptr, nullptr},
            {CmdSave, CgIcon::Export, &saveText, SLOT(save()), nullptr, nullptr},
            {0, -1, nullptr, nullptr, nullptr, nullptr},
            {CmdFind, CgIcon::TbFind, &findText, SLOT(find()), nullptr, &findKeys},
            {CmdLock, CgIcon::Lock, &lockText, SLOT(lock()), &lockTip, nullptr},
            {0, -1, nullptr, nullptr, nullptr, nullptr},
            {CmdDelete, CgIcon::TbDelete, &deleteText, SLOT(remove()), &deleteTip, nullptr},
            {CmdHelp, CgIcon::TbHelp, &helpText, SLOT(help()), nullptr, nullptr},
        };
        auto* main = new EGroupBox(QStringLiteral("Main toolbar: its look is kept in the settings file"));
        bar = new EToolBar(nullptr, EToolBar::Main);
        bar->setObjectName(QStringLiteral("mainToolBar"));
        bar->fill(this, items, int(std::size(items)));
        bar->checkButton(CmdLock, false);
        bar->enableButton(CmdDelete, false);
        main->addWidget(bar);

        const EToolBarOptions options = EToolBarOptions::load();
        auto* choices = new EHBoxLayout;
        auto* sizes = new ERadioGroup(QStringLiteral("Icon size"));
        sizes->setObjectName(QStringLiteral("iconSizes"));
        sizes->addButton(QStringLiteral("&Small (16)"), EToolBarOptions::SMALL_ICON_SIZE);
        sizes->addButton(QStringLiteral("&Big (25)"), EToolBarOptions::BIG_ICON_SIZE);
        sizes->addButton(QStringLiteral("&Huge (40)"), 40);
        sizes->setId(options.iconSize);
        auto* styles = new ERadioGroup(QStringLiteral("Buttons"));
        styles->setObjectName(QStringLiteral("buttonStyles"));
        styles->addButton(QStringLiteral("&Icons only"), Qt::ToolButtonIconOnly);
        styles->addButton(QStringLiteral("&Text only"), Qt::ToolButtonTextOnly);
        styles->addButton(QStringLiteral("Text &beside icons"), Qt::ToolButtonTextBesideIcon);
        styles->addButton(QStringLiteral("Text &under icons"), Qt::ToolButtonTextUnderIcon);
        styles->setId(options.buttonStyle);
        choices->addWidget(sizes);
        choices->addWidget(styles);
        choices->addStretch(1);
        main->addLayout(choices);
        const auto apply = [this, sizes, styles] {
            EToolBarOptions chosen;
            chosen.iconSize = sizes->getId();
            chosen.buttonStyle = styles->getId();
            chosen.save();
            bar->setOptions(chosen);
        };
        connect(sizes->group, &QButtonGroup::idClicked, this, apply);
        connect(styles->group, &QButtonGroup::idClicked, this, apply);
        root->addWidget(main);

        auto* small = new EGroupBox(QStringLiteral("Small toolbar: always 24-pixel icons without text"));
        auto* smallBar = new EToolBar(nullptr, EToolBar::Small);
        smallBar->setObjectName(QStringLiteral("smallToolBar"));
        smallBar->fill(this, items, int(std::size(items)));
        small->addWidget(smallBar);
        root->addWidget(small);

        auto* menus = new EGroupBox(QStringLiteral("Context menu"));
        auto* chosen = new QLabel(QStringLiteral("Context menu: nothing chosen yet"));
        chosen->setObjectName(QStringLiteral("chosenId"));
        menus->addWidget(new MenuArea(chosen));
        menus->addWidget(chosen);
        root->addWidget(menus);
        root->addWidget(last);
        root->addStretch(1);
    }

private slots:
    void open() { report(CmdOpen, openText); }
    void save() { report(CmdSave, saveText); }
    void find() { report(CmdFind, findText); }
    void lock() { report(CmdLock, bar->find(CmdLock)->isChecked() ? QStringLiteral("Lock (on)") : QStringLiteral("Lock (off)")); }
    void remove() { report(CmdDelete, deleteText); }
    void help() { report(CmdHelp, helpText); }

private:
    void report(int id, const QString& what)
    {
        last->setText(QStringLiteral("Last command: id %1, %2").arg(id).arg(what));
    }

    EToolBar* bar = nullptr;
    QLabel* last = nullptr;
};

} // namespace

GALLERY_PAGE(86, "menus", "Menus and toolbar", [] { return new MenusPage; });

#include "page_menus.moc"
