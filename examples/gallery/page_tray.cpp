// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#include "gallery.h"

#include "common_gui_res.h"
#include "eboxlayout.h"
#include "ebutton.h"
#include "eeditbox.h"
#include "eeditpair.h"
#include "egroupbox.h"
#include "eresource.h"
#include "etrayicon.h"

#include <QGuiApplication>
#include <QLabel>
#include <QMenu>
#include <QSystemTrayIcon>

#include <memory>

namespace {

class TrayPage : public QWidget
{
public:
    TrayPage()
    {
        auto* root = new EVBoxLayout(this);
        root->setContentsMargins(8, 8, 8, 8);
        auto* box = new EGroupBox(QStringLiteral("Tray icon"));
        root->addWidget(box);
        root->addStretch(1);

        const bool x11 = QGuiApplication::platformName() == QLatin1String("xcb");
        if (!x11) {
            auto* how = new QLabel(QStringLiteral(
                "The tray icon lives in the system tray of an X11 desktop, and this gallery runs "
                "without one (platform \"%1\").\n\n"
                "To see it, start the gallery on an X11 desktop that has a system tray, or in a "
                "virtual one:\n\n"
                "    Xvfb :7 &\n"
                "    DISPLAY=:7 trayer --edge top --height 32 &\n"
                "    DISPLAY=:7 ./build/bin/common_gui_gallery\n\n"
                "(look at it with a VNC server such as x11vnc on that display). The icon then fills "
                "the whole slot that the tray gives it; right-click it for its menu.")
                                      .arg(QGuiApplication::platformName()));
            how->setObjectName(QStringLiteral("trayHowTo"));
            how->setWordWrap(true);
            how->setTextInteractionFlags(Qt::TextSelectableByMouse);
            box->addWidget(how);
            return;
        }

        state = new QLabel;
        state->setObjectName(QStringLiteral("trayState"));
        state->setWordWrap(true);
        box->addWidget(state);
        auto* tip = new EEditPair(QStringLiteral("&Tool tip:"));
        tip->getEditBox()->setText(QStringLiteral("common_gui gallery"));
        box->addWidget(tip);
        auto* row = new EHBoxLayout;
        auto* show = new EButton(QStringLiteral("&Show in the tray"));
        auto* hide = new EButton(QStringLiteral("&Hide"));
        row->addWidget(show);
        row->addWidget(hide);
        row->addStretch(1);
        box->addLayout(row);
        activated = new QLabel(QStringLiteral("Clicks on the icon: none yet"));
        box->addWidget(activated);

        icon = std::make_unique<ESystemTrayIcon>(this);
        icon->setIcon(QIcon(*Resource::getPixmap(CgIcon::Agent48)));
        menu = new QMenu(this);
        menu->addAction(QStringLiteral("&Say hello"), this, [this] { activated->setText(QStringLiteral("Menu: hello")); });
        menu->addAction(QStringLiteral("&Hide the icon"), this, [this] { icon->hide(); showState(); });
        icon->getTrayIcon()->setContextMenu(menu);
        connect(icon->getTrayIcon(), &QSystemTrayIcon::activated, this, [this](QSystemTrayIcon::ActivationReason r) {
            activated->setText(QStringLiteral("Clicks on the icon: the last one was reason %1").arg(int(r)));
        });
        connect(show, &QPushButton::clicked, this, [this, tip] {
            icon->getTrayIcon()->setToolTip(tip->getEditBox()->text());
            icon->show();
            showState();
        });
        connect(hide, &QPushButton::clicked, this, [this] {
            icon->hide();
            showState();
        });
        showState();
    }

private:
    void showState()
    {
        const bool tray = QSystemTrayIcon::isSystemTrayAvailable();
        state->setText(QStringLiteral("System tray: %1. Icon: %2.%3")
                           .arg(tray ? QStringLiteral("running") : QStringLiteral("none"),
                                icon->getTrayIcon()->isVisible() ? QStringLiteral("shown") : QStringLiteral("hidden"),
                                tray ? QString()
                                     : QStringLiteral(" Without a tray, Show only marks the icon visible; "
                                                      "start a tray (for example trayer) and show it again.")));
    }

    std::unique_ptr<ESystemTrayIcon> icon;
    QMenu* menu = nullptr;
    QLabel* state = nullptr;
    QLabel* activated = nullptr;
};

} // namespace

GALLERY_PAGE(87, "tray", "Tray icon", [] { return new TrayPage; });
