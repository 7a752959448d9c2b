// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
// A small host-list tool built only on the installed common_gui: a table of hosts with find, an
// edit form, import and export, English and Russian.
#pragma once

#include "estatedialog.h"
#include "estatewindow.h"
#include "etable.h"

#include <QVector>

class ECheckBox;
class EEditBox;
class ESpinBox;

struct Host { QString name, address; int port = 22; QString comment; };

/// The hosts, one row each; the application owns it, the table only shows it.
class HostModel : public ETableModel
{
    Q_OBJECT
public:
    int getRowCount() const override { return hosts.size(); }
    int getColumnCount() const override { return 4; }
    QString getCell(int row, int column) const override;
    QString getHeader(int column) const override;
    const QVector<Host>& all() const { return hosts; }
    void setHost(int row, const Host& host);   ///< row == count appends
    void removeRows(int first, int last);
    void replaceAll(const QVector<Host>& list);
    /// One host per line, name;address;port;comment in UTF-8; refused lines are described in \a errors.
    QByteArray toText() const;
    static QVector<Host> fromText(const QByteArray& text, QStringList& errors);
    /// Writes every host to \a path atomically; returns an error text, null on success.
    QString save(const QString& path) const;

private:
    QVector<Host> hosts;
};

/// The edit form: bound caption/field pairs and the house button panel.
class HostDialog : public EStateDialog
{
    Q_OBJECT
public:
    HostDialog(QWidget* parent, const Host& host);
    Host host() const;

private:
    void check();
    EEditBox *name = nullptr, *address = nullptr, *comment = nullptr;
    ESpinBox* port = nullptr;
};

class HostWindow : public EStateWindow
{
    Q_OBJECT
public:
    explicit HostWindow(HostModel* model);
    /// Reads a host file and appends its hosts; returns the refused lines as one text (null if none).
    QString importFile(const QString& path, int* added);
    /// The next cell containing \a text after the current one, wrapping to the top once.
    bool findNext(const QString& text, bool matchCase);

    void saveState(QSettings& s) override;
    void loadState(QSettings& s) override;
private:
    void addHost(), editHost(), deleteHosts(), importHosts(), exportHosts(), findClicked();
    void chooseLanguage(const char* code);
    HostModel* model = nullptr;
    ETable* table = nullptr;
    EEditBox* findWhat = nullptr;
    ECheckBox* matchCase = nullptr;
};
