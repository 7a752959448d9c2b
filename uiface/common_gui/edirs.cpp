// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#include "edirs.h"

#include "esettings.h"
#include "paths.h"

#include <QFile>
#include <QFileInfo>

#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <cstring>

char EDirs::static_lang[20] = {};
QString EDirs::s_helpDir;

namespace {

// A code that does not fit is a programming or installation fault, not something to truncate.
void checkedCopy(char* target, size_t size, const char* source)
{
    const size_t length = std::strlen(source);
    if (length >= size) {
        std::fputs("*** buffer overflow detected ***: language code too long\n", stderr);
        std::abort();
    }
    std::memcpy(target, source, length + 1);
}

int lastSeparator(const QString& path)
{
    if (QDir::separator() == QLatin1Char('\\'))
        return qMax(path.lastIndexOf(QLatin1Char('/')), path.lastIndexOf(QLatin1Char('\\')));
    return path.lastIndexOf(QDir::separator());
}

const char languageFile[] = "lang.ini";

QString languageFilePath(const QDir& dir)
{
    return dir.filePath(QString::fromLatin1(languageFile));
}

QString readLanguageFile(const QDir& dir)
{
    ESettings s(dir, languageFile, QStringLiteral("Language"));
    return s.value(QStringLiteral("Code"), QString()).toString();
}

bool writeLanguageFile(const QDir& dir, const QString& code)
{
    ESettings s(dir, languageFile, QStringLiteral("Language"));
    s.setValue(QStringLiteral("Code"), code);
    s.sync();
    // A damaged old file reads as FormatError, yet Qt writes the new value over it all the same.
    return s.status() != QSettings::AccessError;
}

} // namespace

const char* EDirs::c_binaryDir() { return agentBinDir(); }
const char* EDirs::c_resourceDir() { return agentEtcDir(); }
const char* EDirs::c_settingsDir() { return userDataDirForWrite_utf8(); }

QDir EDirs::getBinaryDir() { return QDir(QString::fromUtf8(agentBinDir())); }
QDir EDirs::getResourceDir() { return QDir(QString::fromUtf8(agentEtcDir())); }
QDir EDirs::getSettingsDir() { return QDir(QString::fromUtf8(userDataDirForWrite_utf8())); }
QDir EDirs::getCommonSettingsDir() { return QDir(QString::fromUtf8(userDataCommonDir_utf8())); }

const char* EDirs::getLanguage()
{
    if (static_lang[0] != 0)
        return static_lang;

    QString code = readLanguageFile(getSettingsDir());
    if (code.isEmpty())
        code = readLanguageFile(getCommonSettingsDir());
    if (!code.isEmpty()) {
        checkedCopy(static_lang, sizeof static_lang, code.toLatin1().constData());
        return static_lang;
    }

    checkedCopy(static_lang, sizeof static_lang, "eng");
    // Switching LC_CTYPE to the environment's locale is a side effect the applications rely on.
    const char* locale = std::setlocale(LC_CTYPE, "");
    if (locale && std::strlen(locale) > 2 && (locale[0] == 'r' || locale[0] == 'R')
        && (locale[1] == 'u' || locale[1] == 'U'))
        checkedCopy(static_lang, sizeof static_lang, "rus");
    return static_lang;
}

void EDirs::setLanguage(const char* code)
{
    checkedCopy(static_lang, sizeof static_lang, code);
    const QString value = QString::fromLatin1(code);
    if (writeLanguageFile(getCommonSettingsDir(), value)) {
        // The new default must not be hidden behind an older choice of the same user.
        QFile::remove(languageFilePath(getSettingsDir()));
    } else if (!writeLanguageFile(getSettingsDir(), value)) {
        qWarning("common_gui: the language \"%s\" could not be saved in %s or in %s", code,
                 qUtf8Printable(languageFilePath(getCommonSettingsDir())),
                 qUtf8Printable(languageFilePath(getSettingsDir())));
    }
    // Emptied after the write, so a language set here is always read back from the file.
    static_lang[0] = 0;
}

QString EDirs::getHelpDir()
{
    if (s_helpDir.isNull()) {
        const QString relative = QStringLiteral("help") + QDir::separator() + QString::fromLatin1(getLanguage());
        s_helpDir = QFileInfo(getResourceDir(), relative).filePath();
    }
    return s_helpDir;
}

void EDirs::setHelpDir(const QString& dir)
{
    s_helpDir = dir;
}

void EDirs::stripFileFromPath(QString& path)
{
    const int pos = lastSeparator(path);
    if (pos >= 0)
        path.truncate(pos);
}

void EDirs::stripFolderFromPath(QString& path)
{
    const int pos = lastSeparator(path);
    if (pos >= 0)
        path.remove(0, pos + 1);
}

void EDirs::stripExtFromPath(QString& path)
{
    const int pos = path.lastIndexOf(QLatin1Char('.'));
    if (pos >= 0)
        path.truncate(pos);
}
