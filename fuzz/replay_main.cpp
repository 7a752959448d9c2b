// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
// Runs one fuzz target over files and directories of inputs without libFuzzer: the normal and the
// sanitizer builds replay every seed and every input that once failed, as a test.
#include <QByteArray>
#include <QDirIterator>
#include <QFile>
#include <QStringList>

#include <cstddef>
#include <cstdint>
#include <cstdio>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size);

int main(int argc, char** argv)
{
    QStringList files;
    for (int i = 1; i < argc; ++i) {
        const QString path = QFile::decodeName(argv[i]);
        if (QFileInfo(path).isDir()) {
            QDirIterator it(path, QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
            while (it.hasNext())
                files << it.next();
        } else {
            files << path;
        }
    }
    files.sort();
    for (const QString& name : qAsConst(files)) {
        QFile file(name);
        if (!file.open(QIODevice::ReadOnly)) {
            std::fprintf(stderr, "cannot read %s\n", qPrintable(name));
            return 1;
        }
        const QByteArray bytes = file.readAll();
        std::fprintf(stderr, "%s\n", qPrintable(name)); // the last name printed is the culprit
        LLVMFuzzerTestOneInput(reinterpret_cast<const uint8_t*>(bytes.constData()), size_t(bytes.size()));
    }
    std::fprintf(stderr, "%d inputs replayed\n", int(files.size()));
    return files.isEmpty() ? 1 : 0;
}
