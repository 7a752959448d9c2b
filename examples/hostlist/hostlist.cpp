// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#include "hostlist.h"

#include "platform/common_core.h"
#include "common_gui_loc.h"
#include "common_gui_res.h"
#include "ebrowser.h"
#include "ebutton.h"
#include "ebuttonpanel.h"
#include "echeckbox.h"
#include "eboxlayout.h"
#include "edirs.h"
#include "eeditbox.h"
#include "eeditpair.h"
#include "efiledialog.h"
#include "emessage.h"
#include "eresource.h"
#include "espinbox.h"
#include "espinpair.h"

#include <QHostAddress>
#include <QMenu>
#include <QMenuBar>
#include <QRegularExpression>
#include <QStatusBar>
#include <QToolBar>

namespace {

const QString hostFilter() { return QStringLiteral("Host lists (*.hosts *.txt);;All files (*)"); }

QString describe(const TTT& error)
{
    std::string message;
    error.makeMulti(message);
    return QString::fromStdString(message);
}

} // namespace

QString HostModel::getCell(int row, int column) const
{
    const Host& h = hosts.at(row);
    return QStringList{h.name, h.address, QString::number(h.port), h.comment}.value(column);
}

QString HostModel::getHeader(int column) const
{
    return QStringList{tr("Name"), tr("Address"), tr("Port"), tr("Comment")}.value(column);
}

void HostModel::setHost(int row, const Host& host)
{
    if (row == hosts.size()) {
        beginInsertRows(QModelIndex(), row, row);
        hosts.append(host);
        endInsertRows();
    } else {
        hosts[row] = host;
        emit dataChanged(index(row, 0), index(row, 3));
    }
}

void HostModel::removeRows(int first, int last)
{
    beginRemoveRows(QModelIndex(), first, last);
    hosts.remove(first, last - first + 1);
    endRemoveRows();
}

void HostModel::replaceAll(const QVector<Host>& list)
{
    beginResetModel();
    hosts = list;
    endResetModel();
}

QByteArray HostModel::toText() const
{
    QByteArray text;
    for (const Host& h : hosts)
        text += QStringList{h.name, h.address, QString::number(h.port), h.comment}.join(QLatin1Char(';')).toUtf8() + '\n';
    return text;
}

QString HostModel::save(const QString& path) const
{
    const QByteArray text = toText();
    try {
        UTF8File::save(path.toUtf8().constData(), text.constData(), unsigned(text.size()));
    } catch (const TTT& error) {
        return describe(error);
    }
    return QString();
}

QVector<Host> HostModel::fromText(const QByteArray& text, QStringList& errors)
{
    QVector<Host> list;
    const QList<QByteArray> lines = text.split('\n');
    for (int i = 0; i < lines.size(); ++i) {
        const QString line = QString::fromUtf8(lines.at(i)).trimmed();
        if (line.isEmpty() || line.startsWith(QLatin1Char('#')))
            continue;
        const QStringList fields = line.split(QLatin1Char(';'));
        bool portOk = false;
        const int port = fields.value(2).toInt(&portOk);
        if (fields.size() < 3 || fields.at(0).isEmpty() || !portOk || port < 1 || port > 65535) {
            errors << tr("Line %1 is not name;address;port;comment: %2").arg(i + 1).arg(line.left(80));
            continue;
        }
        list.append(Host{fields.at(0), fields.at(1), port, fields.mid(3).join(QLatin1Char(';'))});
    }
    return list;
}

HostDialog::HostDialog(QWidget* parent, const Host& host)
    : EStateDialog(parent, "HostDialog")
{
    setWindowTitle(tr("Host"));
    auto* root = new EVRootBoxLayout(this);
    auto* namePair = new EEditPair(tr("&Name:"));
    auto* addressPair = new EEditPair(tr("&Address:"));
    auto* portPair = new ESpinPair(tr("&Port:"), 1, 65535, 1);
    auto* commentPair = new EEditPair(tr("&Comment:"));
    for (EPair* pair : {static_cast<EPair*>(namePair), static_cast<EPair*>(addressPair),
                        static_cast<EPair*>(portPair), static_cast<EPair*>(commentPair)}) {
        pair->bind(namePair);   // the captions share one width, so the fields line up
        root->addWidget(pair);
    }
    portPair->fixWidth(90);
    (name = namePair->getEditBox())->setText(host.name);
    (address = addressPair->getEditBox())->setText(host.address);
    (port = portPair->getSpinBox())->setValue(host.port);
    (comment = commentPair->getEditBox())->setText(host.comment);
    root->addStretch(1);
    auto* panel = new EButtonPanel(this, EButtonPanel::OK | EButtonPanel::Cancel | EButtonPanel::Help, "host.html");
    connect(panel, &EButtonPanel::ok, this, &HostDialog::check);
    connect(panel, &EButtonPanel::cancel, this, &QDialog::reject);
    root->addWidget(panel);
    EState::loadState();   // after the contents exist, so the saved size fits them
}

Host HostDialog::host() const
{
    return Host{name->text().trimmed(), address->text().trimmed(), port->value(), comment->text()};
}

void HostDialog::check()
{
    const Host h = host();
    if (h.name.isEmpty() || h.name.contains(QLatin1Char(';'))) {
        EMessage::erro(this, tr("Give the host a name without ';'."));
        name->setFocus();
    } else if (QHostAddress(h.address).isNull() && !QRegularExpression(QStringLiteral("^[A-Za-z0-9.-]+$")).match(h.address).hasMatch()) {
        EMessage::erro(this, tr("\"%1\" is neither an IP address nor a host name.").arg(h.address));
        address->setFocus();
    } else {
        accept();
    }
}

HostWindow::HostWindow(HostModel* hosts)
    : EStateWindow(nullptr, "HostWindow", tr("Host list"), CgIcon::Agent16, CgIcon::Agent32)
    , model(hosts)
{
    auto* central = new QWidget(this);
    auto* root = new EVRootBoxLayout(central);
    table = new ETable(model, false, central);
    table->setMultiSelect();
    table->setWideColumn(3, true);
    table->setHeightInRows(12);
    table->setSlotForDoubleClick(this, &HostWindow::editHost);
    root->addWidget(table, 1);

    auto* findRow = new EHBoxLayout;
    auto* findPair = new EEditPair(tr("F&ind:"));
    findWhat = findPair->getEditBox();
    matchCase = new ECheckBox(LCQT__Match_case);
    auto* next = new EButton(LCQT__Find_Next__0);
    next->setSlotForClick(this, &HostWindow::findClicked);
    connect(findWhat, &QLineEdit::returnPressed, this, &HostWindow::findClicked);
    findRow->addWidget(findPair, 1);
    findRow->addWidget(matchCase);
    findRow->addWidget(next);
    root->addLayout(findRow);
    setCentralWidget(central);

    QMenu* file = menuBar()->addMenu(tr("&File"));
    QToolBar* tools = addToolBar(tr("Hosts"));
    tools->setObjectName(QStringLiteral("hostTools"));
    const struct { QString text; int icon; QKeySequence key; void (HostWindow::*run)(); } actions[] = {
        {tr("&Add..."), CgIcon::Request, QKeySequence::New, &HostWindow::addHost},
        {tr("&Edit..."), CgIcon::TbSettings, Qt::Key_F2, &HostWindow::editHost},
        {tr("&Delete"), CgIcon::TbDelete, QKeySequence::Delete, &HostWindow::deleteHosts},
        {tr("&Import..."), CgIcon::Import, QKeySequence::Open, &HostWindow::importHosts},
        {tr("E&xport..."), CgIcon::Export, QKeySequence::SaveAs, &HostWindow::exportHosts},
    };
    for (const auto& a : actions) {
        QAction* action = file->addAction(QIcon(*Resource::getPixmap(a.icon)), a.text, this, a.run, a.key);
        tools->addAction(action);
    }
    QMenu* language = menuBar()->addMenu(tr("&Language"));
    language->addAction(QStringLiteral("English"), this, [this] { chooseLanguage("eng"); });
    language->addAction(QString::fromUtf8("Русский"), this, [this] { chooseLanguage("rus"); });
    menuBar()->addMenu(LCQT__Help)->addAction(LCQT__Help, this, [] { EBrowser::help(QStringLiteral("index.html")); });
    EBrowser::setHelp(this, "index.html");
    EState::loadState();
}

void HostWindow::saveState(QSettings& s)
{
    saveLayout(s);
    table->saveState(s, "Columns");
}

void HostWindow::loadState(QSettings& s)
{
    loadLayout(s);
    table->loadState(s, "Columns");
}

void HostWindow::addHost()
{
    HostDialog dialog(this, Host());
    if (dialog.exec() == QDialog::Accepted)
        model->setHost(model->getRowCount(), dialog.host());
}

void HostWindow::editHost()
{
    const int row = table->currentRow();
    if (row < 0)
        return;
    HostDialog dialog(this, model->all().at(row));
    if (dialog.exec() == QDialog::Accepted)
        model->setHost(row, dialog.host());
}

void HostWindow::deleteHosts()
{
    if (!table->hasSelected() || !EMessage::ask(this, tr("Delete %n host(s)?", nullptr, table->selectedCount())))
        return;
    // The bottom block first, so the rows above keep their numbers.
    for (const auto& range : table->selectedRanges())
        model->removeRows(range.first, range.second);
}

QString HostWindow::importFile(const QString& path, int* added)
{
    *added = 0;
    ArrayHolder<char> buffer;
    unsigned size = 0;
    try {
        size = UTF8File::load(path.toUtf8().constData(), buffer, 10 * 1024 * 1024, false);
    } catch (const TTT& error) {
        return describe(error);
    }
    QStringList refused;
    const QVector<Host> read = HostModel::fromText(QByteArray(buffer.get(), int(size)), refused);
    // Every refused line goes into one box, not one box per line.
    EMessage::setCumulativeErrorMode();
    for (const QString& line : refused)
        EMessage::erro(this, line);
    for (const Host& h : read)
        model->setHost(model->getRowCount(), h);
    *added = read.size();
    return EMessage::getCumulativeError();
}

void HostWindow::importHosts()
{
    const QString path = EFileDialog::open(this, tr("Import hosts"), hostFilter(), nullptr, nullptr, "HostFiles");
    if (path.isEmpty())
        return;
    int added = 0;
    const QString errors = importFile(path, &added);
    if (!errors.isNull())
        EMessage::erro(this, errors);
    statusBar()->showMessage(tr("%n host(s) imported", nullptr, added));
}

void HostWindow::exportHosts()
{
    const QString path = EFileDialog::save(this, tr("Export hosts"), hostFilter(), nullptr, nullptr, "HostFiles");
    const QString error = path.isEmpty() ? QString() : model->save(path);
    if (!error.isNull())
        EMessage::erro(this, error);
}

bool HostWindow::findNext(const QString& text, bool caseSensitive)
{
    const Qt::CaseSensitivity cs = caseSensitive ? Qt::CaseSensitive : Qt::CaseInsensitive;
    return table->find(text, cs, false, true, +1, false) || table->find(text, cs, false, true, +1, true);
}

void HostWindow::findClicked()
{
    if (!findWhat->text().isEmpty() && !findNext(findWhat->text(), matchCase->isChecked()))
        EMessage::info(this, LCQT__Text_not_found);
}

void HostWindow::chooseLanguage(const char* code)
{
    EDirs::setLanguage(code);
    EMessage::info(this, tr("The new language is used from the next start of the program."));
}
