// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#include "gallery.h"

#include "platform/common_core.h"
#include "ebutton.h"
#include "eboxlayout.h"
#include "ecodeeditor.h"
#include "edirs.h"
#include "egroupbox.h"
#include "elspdialog.h"
#include "elsptextedit.h"
#include "emessage.h"
#include "etexteditor.h"

#include <QDir>
#include <QFile>
#include <QLabel>

namespace {

/// The gallery ships its samples read-only in its resource tree; the windows work on copies in the
/// settings directory, so that saving and changing them harms nothing.
QString sampleCopy(const char* name)
{
    const QString fileName = QString::fromLatin1(name);
    QDir dir = EDirs::getSettingsDir();
    dir.mkpath(QStringLiteral("samples"));
    const QString copy = dir.filePath(QStringLiteral("samples/") + fileName);
    if (!QFile::exists(copy)) {
        QFile::copy(EDirs::getResourceDir().filePath(QStringLiteral("samples/") + fileName), copy);
        QFile::setPermissions(copy, QFile::ReadOwner | QFile::WriteOwner | QFile::ReadGroup | QFile::ReadOther);
    }
    return copy;
}

/// A file that declares its encoding, in an ETextEditor with every menu.
QWidget* openCodeFile(QWidget* page, const char* name, const QString& title)
{
    auto* window = new ETextEditor(page, title, ETextEditor::AllMenus);
    window->setModal(false); // several windows and the gallery stay usable side by side
    window->setAttribute(Qt::WA_DeleteOnClose);
    window->openFile(sampleCopy(name));
    return window;
}

/// A policy without a declaration: read as bytes and handed over with the policy default
/// (Windows-1251), as an application holding a policy in memory does.
QWidget* openPolicy(QWidget* page)
{
    auto* window = new ELSPDialog(page, QStringLiteral("Policy text"));
    window->setModal(false);
    window->setAttribute(Qt::WA_DeleteOnClose);
    try {
        ArrayHolder<char> bytes;
        const unsigned int size =
            UTF8File::load(sampleCopy("office.lsp").toUtf8().constData(), bytes, ELSPTextEdit::maxFileSize, false);
        window->setText(bytes.get(), size, ELSPTextEdit::defaultEncodingForLSP);
    } catch (const TTT& error) {
        EMessage::erro(page, error);
    } catch (const std::bad_alloc& error) {
        EMessage::erro(page, error);
    }
    return window;
}

QList<QWidget*> openAll(QWidget* page)
{
    return {openCodeFile(page, "start-client.sh", QStringLiteral("Script")),
            openCodeFile(page, "certificates.xml", QStringLiteral("Certificates")), openPolicy(page)};
}

class TextFilesPage : public QWidget
{
public:
    TextFilesPage()
    {
        auto* root = new EVBoxLayout(this);
        root->setContentsMargins(8, 8, 8, 8);

        auto* windows = new EGroupBox(QStringLiteral("Editor windows on sample files"));
        addRow(windows, QStringLiteral("&Script..."), QStringLiteral("openScript"),
               QStringLiteral("start-client.sh: KOI8-R, declared by the comment \"# -*- encoding: KOI8-R -*-\". "
                              "Try Encoding > Windows-1251 and back to Auto: the bytes stay as they are."),
               [this] { return openCodeFile(this, "start-client.sh", QStringLiteral("Script")); });
        addRow(windows, QStringLiteral("&XML file..."), QStringLiteral("openXml"),
               QStringLiteral("certificates.xml: UTF-8, declared by <?xml ... encoding=\"UTF-8\"?>. Change the "
                              "declaration in the first line and save: the file is written in the new encoding."),
               [this] { return openCodeFile(this, "certificates.xml", QStringLiteral("Certificates")); });
        addRow(windows, QStringLiteral("&Policy..."), QStringLiteral("openPolicy"),
               QStringLiteral("office.lsp: Windows-1251 without a declaration, shown in ELSPDialog with the "
                              "policy default. File > Open there uses the default for files, UTF-8."),
               [this] { return openPolicy(this); });
        root->addWidget(windows);

        auto* where = new QLabel(QStringLiteral("The windows edit copies in %1; delete them to start again.")
                                     .arg(QDir::toNativeSeparators(EDirs::getSettingsDir().filePath(QStringLiteral("samples")))));
        where->setWordWrap(true);
        root->addWidget(where);

        auto* preview = new EGroupBox(QStringLiteral("ECodeEditor on the page: the script as its bytes declare"));
        auto* editor = new ECodeEditor(true);
        editor->setObjectName(QStringLiteral("scriptPreview"));
        editor->setReadOnly(true);
        editor->loadFromFile(sampleCopy("start-client.sh"));
        preview->addWidget(editor, 1);
        auto* encoding = new QLabel(QStringLiteral("Detected encoding: %1, first line %2 bytes long")
                                        .arg(editor->getDetectedEncoding())
                                        .arg(editor->getHeaderLength()));
        preview->addWidget(encoding);
        root->addWidget(preview, 1);
    }

private:
    template <typename Open>
    void addRow(EGroupBox* box, const QString& text, const QString& name, const QString& about, Open open)
    {
        auto* row = new EHBoxLayout;
        auto* button = new EButton(text);
        button->setObjectName(name);
        connect(button, &QPushButton::clicked, this, [open] { open()->show(); });
        auto* label = new QLabel(about);
        label->setWordWrap(true);
        row->addWidget(button, 0, Qt::AlignTop);
        row->addWidget(label, 1);
        box->addLayout(row);
    }
};

} // namespace

GALLERY_PAGE(75, "textfiles", "Text files", [] { return new TextFilesPage; }, openAll);
