// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
// The gallery: every widget family of common_gui on a page of its own.
//
// Run it on a desktop to try the widgets. Without a display (or with --screenshots DIR) it renders
// every page to DIR/NN_<page>.png and exits.
#include "gallery.h"

#include "cg_loc_modules.h"
#include "ectrlc.h"
#include "edirs.h"
#include "eresource.h"
#include "platform/paths.h"

#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QMainWindow>
#include <QMessageBox>
#include <QStackedWidget>
#include <QStatusBar>
#include <QTimer>
#include <QToolBar>

#include <algorithm>
#include <cstdio>
#include <cstring>

std::vector<GalleryPage>& galleryPages()
{
    static std::vector<GalleryPage> pages;
    return pages;
}

bool registerGalleryPage(int order, const char* id, const char* title, std::function<QWidget*()> make,
                         std::function<QList<QWidget*>(QWidget*)> windows)
{
    galleryPages().push_back(
        GalleryPage{order, QString::fromUtf8(id), QString::fromUtf8(title), std::move(make), std::move(windows)});
    return true;
}

namespace {

class GalleryWindow : public QMainWindow
{
public:
    GalleryWindow()
    {
        setWindowTitle(QStringLiteral("common_gui gallery"));
        auto* central = new QWidget(this);
        auto* layout = new QHBoxLayout(central);
        list = new QListWidget(central);
        list->setObjectName(QStringLiteral("pageList"));
        stack = new QStackedWidget(central);
        layout->addWidget(list);
        layout->addWidget(stack, 1);
        setCentralWidget(central);

        for (const GalleryPage& page : galleryPages()) {
            list->addItem(page.title);
            QWidget* w = page.make();
            w->setObjectName(page.id);
            stack->addWidget(w);
        }
        // As wide as the longest title: the list never needs a horizontal scroll bar.
        list->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        list->setFixedWidth(list->sizeHintForColumn(0) + 2 * list->frameWidth() + 8);
        connect(list, &QListWidget::currentRowChanged, stack, &QStackedWidget::setCurrentIndex);
        list->setCurrentRow(0);

        auto* bar = addToolBar(QStringLiteral("Language"));
        bar->setObjectName(QStringLiteral("languageBar"));
        bar->addWidget(new QLabel(QStringLiteral(" Language: "), bar));
        auto* language = new QComboBox(bar);
        language->setObjectName(QStringLiteral("language"));
        language->addItem(QStringLiteral("English"), QStringLiteral("eng"));
        language->addItem(QString::fromUtf8("Русский"), QStringLiteral("rus"));
        const QString current = QString::fromLatin1(EDirs::getLanguage());
        language->setCurrentIndex(current == QLatin1String("rus") ? 1 : 0);
        bar->addWidget(language);
        connect(language, QOverload<int>::of(&QComboBox::activated), this, [this, language](int index) {
            EDirs::setLanguage(language->itemData(index).toString().toLatin1().constData());
            // Widgets copy their texts when they are built: a new language needs a restart.
            statusBar()->showMessage(QStringLiteral("Language saved; restart the gallery to apply it."));
        });
        resize(1000, 700);
    }

    int pageCount() const { return stack->count(); }
    void showPage(int index)
    {
        list->setCurrentRow(index);
    }
    QWidget* page(int index) const { return stack->widget(index); }

private:
    QListWidget* list = nullptr;
    QStackedWidget* stack = nullptr;
};

int renderAll(GalleryWindow& window, const QString& dir)
{
    QDir().mkpath(dir);
    window.show();
    int written = 0;
    int expected = window.pageCount();
    for (int i = 0; i < window.pageCount(); ++i) {
        window.showPage(i);
        QApplication::processEvents();
        const QString file = QStringLiteral("%1/%2_%3.png")
                                 .arg(dir)
                                 .arg(i + 1, 2, 10, QLatin1Char('0'))
                                 .arg(window.page(i)->objectName());
        if (window.grab().save(file))
            ++written;
        else
            std::fprintf(stderr, "gallery: cannot write %s\n", file.toLocal8Bit().constData());

        const auto& windows = galleryPages()[size_t(i)].windows;
        const QList<QWidget*> opened = windows ? windows(window.page(i)) : QList<QWidget*>();
        for (int k = 0; k < opened.size(); ++k) {
            QWidget* w = opened.at(k);
            w->show();
            QApplication::processEvents();
            ++expected;
            const QString shot = QStringLiteral("%1/%2_%3_%4.png")
                                     .arg(dir)
                                     .arg(i + 1, 2, 10, QLatin1Char('0'))
                                     .arg(window.page(i)->objectName())
                                     .arg(k + 1);
            if (w->grab().save(shot))
                ++written;
            else
                std::fprintf(stderr, "gallery: cannot write %s\n", shot.toLocal8Bit().constData());
            delete w;
        }
    }
    std::printf("gallery: wrote %d image(s) to %s\n", written, QDir(dir).absolutePath().toLocal8Bit().constData());
    return written == expected ? 0 : 1;
}

// The gallery keeps its settings (window layouts, remembered texts, its language) in
// gallery-settings/ beside its bin/ directory, never in the user's real configuration, unless the
// caller redirected the directories already.
void keepSettingsBesideTheGallery()
{
    const QString root = QDir(QString::fromUtf8(agentBinDir())).absoluteFilePath(QStringLiteral("../gallery-settings"));
    const struct { const char* variable; const char* sub; } dirs[] = {{"CG_USER_DIR", "user"}, {"CG_COMMON_DIR", "common"}};
    for (const auto& dir : dirs) {
        if (!qEnvironmentVariableIsEmpty(dir.variable))
            continue;
        const QString path = QDir::cleanPath(root + QLatin1Char('/') + QLatin1String(dir.sub));
        QDir().mkpath(path);
        qputenv(dir.variable, path.toUtf8());
    }
}

} // namespace

int main(int argc, char** argv)
{
    QString shotDir;
    for (int i = 1; i < argc; ++i) {
        if (std::strcmp(argv[i], "--screenshots") == 0 && i + 1 < argc)
            shotDir = QString::fromLocal8Bit(argv[i + 1]);
    }
    const bool headless = qEnvironmentVariableIsEmpty("DISPLAY") && qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY");
    if (headless && qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    if (headless && shotDir.isEmpty())
        shotDir = QStringLiteral("gallery-screenshots");
    // The gallery is an application of its own: its help pages live in share/common_gui_gallery.
    setProductName("common_gui_gallery");
    keepSettingsBesideTheGallery();

    QApplication app(argc, argv);
    ECtrlC ctrlC; // Ctrl+C in the terminal closes the gallery like its window does
    std::stable_sort(galleryPages().begin(), galleryPages().end(),
                     [](const GalleryPage& a, const GalleryPage& b) { return a.order < b.order; });

    // Start-up order: language first, then the library's texts, then windows.
    const char* language = EDirs::getLanguage();
    Loc::GUIModule guiTexts;
    Loc::QTLibModule qtTexts;
    std::string error;
    if (!guiTexts.load(language, &error))
        std::fprintf(stderr, "gallery: %s; going on in English\n", error.c_str());
    if (!qtTexts.load(language, &error))
        std::fprintf(stderr, "gallery: %s; Qt's own texts stay English\n", error.c_str());
    // The default images of the library's icon table, installed with the library.
    Resource::loadDefaultIcons();

    // Nobody answers a message box in a headless run: one that opens is a fault of the page, so it
    // is reported and closed instead of blocking the run for ever.
    int blocked = 0;
    QTimer modalWatch;
    if (!shotDir.isEmpty()) {
        QObject::connect(&modalWatch, &QTimer::timeout, &app, [&blocked] {
            QWidget* modal = QApplication::activeModalWidget();
            if (!modal)
                return;
            const auto* box = qobject_cast<QMessageBox*>(modal);
            std::fprintf(stderr, "gallery: a modal window blocked the run: %s: %s\n",
                         modal->windowTitle().toLocal8Bit().constData(),
                         box ? box->text().toLocal8Bit().constData() : "");
            ++blocked;
            modal->close();
        });
        modalWatch.start(500);
    }

    GalleryWindow window;
    if (!shotDir.isEmpty())
        return renderAll(window, shotDir) == 0 && blocked == 0 ? 0 : 1;
    window.show();
    return app.exec();
}
