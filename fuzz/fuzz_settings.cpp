// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
// One settings file made of any bytes, used as the user's settings file and as lang.ini, read the
// ways the library reads them: arrays, integer lists, window layouts, remembered combo texts and
// the language. Each answer must be one the file could give.
#include "fuzzsupport.h"

#include "ecombobox.h"
#include "edirs.h"
#include "esettings.h"
#include "estate.h"

#include <QApplication>
#include <QDateTime>
#include <QFile>
#include <QScreen>
#include <QSet>
#include <QTemporaryDir>

#include <cstddef>
#include <cstdint>
#include <cstring>

namespace {

class Window : public QWidget
{
public:
    QSize sizeHint() const override { return QSize(300, 200); }
};

void ignoreMessages(QtMsgType, const QMessageLogContext&, const QString&) {}

// The product directories point into directories of the fuzzer's own, removed at exit.
QString redirect(const char* variable)
{
    static QList<QTemporaryDir*> dirs;
    static struct Cleanup { ~Cleanup() { qDeleteAll(dirs); } } cleanup;
    dirs.append(new QTemporaryDir);
    FUZZ_CHECK(dirs.last()->isValid());
    qputenv(variable, QFile::encodeName(dirs.last()->path()));
    return dirs.last()->path();
}

// QSettings keeps what it read while a file's size and time look unchanged, and inputs follow each
// other within a second: each gets a time of its own.
void write(const QString& fileName, const QByteArray& bytes)
{
    static qint64 stamp = 1000000000;
    QFile file(fileName);
    FUZZ_CHECK(file.open(QIODevice::WriteOnly | QIODevice::Truncate) && file.write(bytes) == bytes.size());
    FUZZ_CHECK(file.setFileTime(QDateTime::fromSecsSinceEpoch(++stamp), QFileDevice::FileModificationTime));
}

QRect desktop()
{
    QRect all;
    for (const QScreen* screen : QGuiApplication::screens())
        all |= screen->geometry();
    return all;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    static const QString userDir = redirect("CG_USER_DIR");
    static const QString commonDir = redirect("CG_COMMON_DIR");
    static int argc = 1;
    static char name[] = "fuzz_settings";
    static char* argv[] = {name, nullptr};
    static QApplication* app = [] {
        qputenv("QT_QPA_PLATFORM", "offscreen");
        qInstallMessageHandler(ignoreMessages);
        return new QApplication(argc, argv);
    }();
    Q_UNUSED(app);

    const QByteArray bytes(reinterpret_cast<const char*>(data), int(size));
    EDirs::setLanguage("eng"); // empties the cached language, so the file below is read again
    write(userDir + QStringLiteral("/common_gui.ini"), bytes);
    write(commonDir + QStringLiteral("/lang.ini"), bytes);
    const int lines = bytes.count('\n') + bytes.count('\r') + 1;

    {
        ESettings s(QStringLiteral("Lists"));
        for (const QString& array : {QStringLiteral("L"), QStringLiteral("Sizes")}) {
            ESettingsReadArray reader(s, array);
            FUZZ_CHECK(reader.getSize() >= 0);
            int present = 0;
            while (reader.getIndex() < reader.getSize())
                present += reader.read().isValid() ? 1 : 0;
            FUZZ_CHECK(present <= lines);
        }
        QList<int> list{-1};
        ESettings::getList("L", list, s);
        FUZZ_CHECK(list.size() <= lines);
    }
    {
        ESettings s(QStringLiteral("Win"));
        Window window;
        EState::loadLayout(s, &window);
        const QRect shown = window.geometry(), all = desktop();
        FUZZ_CHECK(shown.width() <= all.width() && shown.height() <= all.height());
        FUZZ_CHECK(shown.intersects(all));
    }
    {
        QWidget owner;
        EComboState combo(&owner, QStringLiteral("History"));
        FUZZ_CHECK(combo.count() <= 64);
        QSet<QString> seen;
        for (int i = 0; i < combo.count(); ++i) {
            FUZZ_CHECK(!combo.itemText(i).isEmpty() && !seen.contains(combo.itemText(i)));
            seen.insert(combo.itemText(i));
        }
    }

    // A stored code of 20 bytes or more aborts on purpose; every shorter one is the answer.
    const QString code = QSettings(commonDir + QStringLiteral("/lang.ini"), QSettings::IniFormat)
                             .value(QStringLiteral("Language/Code"), QString())
                             .toString();
    const QByteArray latin1 = code.toLatin1();
    if (std::strlen(latin1.constData()) < 20) {
        const char* language = EDirs::getLanguage();
        if (code.isEmpty())
            FUZZ_CHECK(std::strcmp(language, "eng") == 0 || std::strcmp(language, "rus") == 0);
        else
            FUZZ_CHECK(std::strcmp(language, latin1.constData()) == 0);
    }
    return 0;
}
