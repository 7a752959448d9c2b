// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
// A state window and a state dialog: move them, resize them, close them any way you like, and
// they open again where they were, this run or the next.
#include "gallery.h"

#include "common_gui_res.h"
#include "eboxlayout.h"
#include "edirs.h"
#include "esettings.h"
#include "estatedialog.h"
#include "estatewindow.h"
#include "eutils.h"

#include <QDialogButtonBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPointer>
#include <QPushButton>
#include <QSettings>
#include <QSpinBox>
#include <QStatusBar>
#include <QToolBar>
#include <QVBoxLayout>

namespace {

const char* const windowName = "GalleryStateWindow";
const char* const dialogName = "GalleryStateDialog";

//! [state window]
class GalleryStateWindow : public EStateWindow
{
public:
    explicit GalleryStateWindow(QWidget* parent)
        : EStateWindow(parent, windowName, QStringLiteral("A window that remembers its place"), CgIcon::Agent,
                       CgIcon::Agent16)
    {
        auto* bar = addToolBar(QStringLiteral("Tools"));
        bar->setObjectName(QStringLiteral("tools"));
        bar->addAction(QStringLiteral("Right-click me: no menu"));
        auto* text = new QPlainTextEdit(this);
        text->setPlainText(QStringLiteral("Move and resize this window, then close it: with the close button "
                                          "or with Escape.\n\nIt opens again where you left it, also after a "
                                          "restart of the gallery."));
        setCentralWidget(text);
        statusBar()->showMessage(QStringLiteral("State name: %1").arg(stateName()));
        loadState(); // after the contents: the size hint of a first opening depends on them
    }

    using EStateWindow::loadState;
    using EStateWindow::saveState;
    void saveState(QSettings& s) override { saveLayout(s); }
    void loadState(QSettings& s) override { loadLayout(s); }
};
//! [state window]

class GalleryStateDialog : public EStateDialog
{
public:
    explicit GalleryStateDialog(QWidget* parent)
        : EStateDialog(parent, dialogName)
    {
        setWindowTitle(QStringLiteral("A dialog that remembers its place"));
        auto* form = new QFormLayout;
        form->addRow(QStringLiteral("Host:"), new QLineEdit(QStringLiteral("gate.example.org"), this));
        auto* port = new QSpinBox(this);
        port->setRange(1, 65535);
        port->setValue(500);
        form->addRow(QStringLiteral("Port:"), port);
        auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
        connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
        connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
        auto* layout = new EVRootBoxLayout(this);
        layout->addWidget(new QLabel(QStringLiteral("OK, Cancel, Escape and the close button all save the layout."), this));
        layout->addLayout(form);
        layout->addStretch(1);
        layout->addWidget(buttons);
        loadState();
    }
};

QString describe(const char* group)
{
    ESettings s(QString::fromLatin1(group));
    if (!s.contains(QStringLiteral("Size")) && !s.contains(QStringLiteral("Geometry")))
        return QStringLiteral("[%1] nothing stored yet: opens centred").arg(QLatin1String(group));
    const QSize size = s.value(QStringLiteral("Size")).toSize();
    const QPoint pos = s.value(QStringLiteral("Pos")).toPoint();
    return QStringLiteral("[%1] Size %2 x %3, Pos (%4, %5), Geometry %6 bytes")
        .arg(QLatin1String(group))
        .arg(size.width())
        .arg(size.height())
        .arg(pos.x())
        .arg(pos.y())
        .arg(s.value(QStringLiteral("Geometry")).toByteArray().size());
}

class WindowStatePage : public QWidget
{
public:
    WindowStatePage()
    {
        auto* layout = new EVRootBoxLayout(this);
        // The path on a line of its own: word wrap would break it at a slash.
        auto* intro = new QLabel(QStringLiteral("EStateWindow and EStateDialog keep their layout under their state "
                                                "names in\n%1\nOpen them, move them, close them, open them again.")
                                     .arg(EDirs::getSettingsDir().filePath(QStringLiteral("common_gui.ini"))),
                                 this);
        intro->setWordWrap(true);
        layout->addWidget(intro);

        auto* buttons = new EHBoxLayout;
        auto* openWindow = new QPushButton(QStringLiteral("Open state window"), this);
        openWindow->setObjectName(QStringLiteral("openWindow"));
        auto* openDialog = new QPushButton(QStringLiteral("Open state dialog"), this);
        openDialog->setObjectName(QStringLiteral("openDialog"));
        auto* forget = new QPushButton(QStringLiteral("Forget both layouts"), this);
        forget->setObjectName(QStringLiteral("forget"));
        buttons->addWidget(openWindow);
        buttons->addWidget(openDialog);
        buttons->addWidget(forget);
        buttons->addStretch(1);
        layout->addLayout(buttons);

        stored = new QPlainTextEdit(this);
        stored->setObjectName(QStringLiteral("stored"));
        stored->setReadOnly(true);
        layout->addWidget(new QLabel(QStringLiteral("Stored now:"), this));
        stored->setMaximumHeight(stored->fontMetrics().lineSpacing() * 4);
        layout->addWidget(stored);
        events = new QLabel(this);
        events->setObjectName(QStringLiteral("events"));
        layout->addWidget(events);
        layout->addStretch(1);

        connect(openWindow, &QPushButton::clicked, this, [this] { showWindow(); });
        connect(openDialog, &QPushButton::clicked, this, [this] {
            GalleryStateDialog dialog(this);
            const int result = dialog.exec();
            events->setText(QStringLiteral("The dialog ended with %1 and saved its layout.")
                                .arg(result == QDialog::Accepted ? QStringLiteral("OK") : QStringLiteral("Cancel")));
            refresh();
        });
        connect(forget, &QPushButton::clicked, this, [this] {
            for (const char* group : {windowName, dialogName}) {
                ESettings s{QString()};
                s.remove(QString::fromLatin1(group));
            }
            events->setText(QStringLiteral("Both layouts forgotten: the next opening is centred."));
            refresh();
        });
        refresh();
    }

private:
    void showWindow()
    {
        if (window) {
            EUtils::show(window);
            return;
        }
        window = new GalleryStateWindow(this);
        // The window deletes itself after closing; the QPointer forgets it by itself, the signal
        // tells us when to look at the file again.
        connect(window.data(), &EStateWindow::stateWindowClosed, this, [this] {
            events->setText(QStringLiteral("The window closed (stateWindowClosed) and saved its layout."));
            // Saving follows the signal: read the file once the close has run its course.
            QMetaObject::invokeMethod(this, [this] { refresh(); }, Qt::QueuedConnection);
        });
        window->show();
    }

    void refresh()
    {
        stored->setPlainText(describe(windowName) + QLatin1Char('\n') + describe(dialogName));
    }

    QPointer<GalleryStateWindow> window;
    QPlainTextEdit* stored = nullptr;
    QLabel* events = nullptr;
};

} // namespace

GALLERY_PAGE(40, "windowstate", "Window state", [] { return new WindowStatePage; });
