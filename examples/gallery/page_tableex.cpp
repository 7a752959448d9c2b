// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
// ETableEx: every cell kind in one table of jobs, progress bars driven by a timer, and a plain ETable
// beside it that shows what the editors wrote into the model.
#include "gallery.h"

#include "ebox.h"
#include "eboxlayout.h"
#include "eeditbox.h"
#include "etableex.h"

#include <QFontMetrics>
#include <QLabel>
#include <QSplitter>
#include <QTimer>

#include <vector>

namespace {

enum Column { Job, Enabled, Protocol, Note, Progress, Retries, Columns };
const int kinds[Columns] = {ETableModelEx::Text, ETableModelEx::CheckBox, ETableModelEx::ComboBox,
                            ETableModelEx::EditBox, ETableModelEx::ProgressBar, ETableModelEx::SpinBox};
const char* const protocolNames[] = {"tcp", "udp", "icmp", "esp", "ah", "gre"};

struct JobRow
{
    QString name;
    bool enabled = true;
    QString protocol;
    QString note;
    int progress = 0;
    int retries = 0;
};

const QString titles[Columns] = {QStringLiteral("Job"), QStringLiteral("Enabled"), QStringLiteral("Protocol"),
                                 QStringLiteral("Note"), QStringLiteral("Progress"), QStringLiteral("Retries")};
const QString* titlePointers[Columns] = {&titles[0], &titles[1], &titles[2], &titles[3], &titles[4], &titles[5]};

/// The application's side of the table: it answers the kinds and keeps what the editors hand it.
class JobModel : public ETableModelEx
{
public:
    explicit JobModel(QObject* parent)
        : ETableModelEx(Columns, titlePointers, parent)
    {
        for (int r = 0; r < 40; ++r) {
            JobRow row;
            row.name = QStringLiteral("backup-%1").arg(r + 1, 2, 10, QLatin1Char('0'));
            row.enabled = r % 3 != 0;
            row.protocol = QString::fromLatin1(protocolNames[r % 6]);
            row.note = r % 4 ? QString() : QStringLiteral("nightly");
            row.progress = (r * 17) % 101;
            row.retries = r % 5;
            rows.push_back(row);
        }
    }
    int getRowCount() const override { return int(rows.size()); }
    QString getCell(int row, int column) const override
    {
        const JobRow& r = rows.at(size_t(row));
        switch (column) {
        case Job:
            return r.name;
        case Protocol:
            return r.protocol;
        case Note:
            return r.note;
        case Retries:
            return QString::number(r.retries);
        default:
            return QString();
        }
    }
    int getCellType(int, int column) const override { return column >= 0 && column < Columns ? kinds[column] : 0; }
    bool getCheckBox(int row, int) const override { return rows.at(size_t(row)).enabled; }
    void setCheckBox(int row, int, bool checked) override { rows[size_t(row)].enabled = checked; }
    void fillComboBox(int, int, EComboBox* combo) override
    {
        for (const char* name : protocolNames)
            combo->boxModel()->append(new EBoxItem(QString::fromLatin1(name)));
    }
    void setComboBox(int row, int, EComboBox* combo) override { rows[size_t(row)].protocol = combo->currentText(); }
    void setEditBox(int row, int, EEditBox*, const QString& text) override { rows[size_t(row)].note = text; }
    void fillSpinBox(int, int, ESpinBox* spin) override { spin->setRange(0, 10); }
    void setSpinBox(int row, int, ESpinBox*, const QString& text) override { rows[size_t(row)].retries = text.toInt(); }
    int getProgress(int row, int, QColor& colour) const override
    {
        const JobRow& r = rows.at(size_t(row));
        colour = !r.enabled ? QColor(160, 160, 160) : r.progress >= 100 ? QColor(60, 170, 90) : QColor(70, 130, 220);
        return r.progress;
    }

    /// One timer step: every enabled job moves on; finished ones start again after a pause.
    void advance()
    {
        for (JobRow& r : rows) {
            if (!r.enabled)
                continue;
            r.progress = r.progress >= 130 ? 0 : r.progress + 1 + r.retries;
        }
        emit dataChanged(index(0, Progress), index(getRowCount() - 1, Progress));
    }

    std::vector<JobRow> rows;
};

/// The same jobs as plain text, so the page shows what the editors wrote.
class ValuesModel : public ETableModel
{
public:
    ValuesModel(const JobModel* jobs, QObject* parent)
        : ETableModel(parent)
        , jobs(jobs)
    {
    }
    int getRowCount() const override { return jobs->getRowCount(); }
    int getColumnCount() const override { return 5; }
    QString getCell(int row, int column) const override
    {
        const JobRow& r = jobs->rows.at(size_t(row));
        switch (column) {
        case 0:
            return r.name;
        case 1:
            return r.enabled ? QStringLiteral("yes") : QStringLiteral("no");
        case 2:
            return r.protocol;
        case 3:
            return r.note;
        default:
            return QString::number(r.retries);
        }
    }
    QString getHeader(int column) const override
    {
        static const char* const names[] = {"Job", "Enabled", "Protocol", "Note", "Retries"};
        return column >= 0 && column < 5 ? QString::fromLatin1(names[column]) : QString();
    }
    void refresh(int row) { emit dataChanged(index(row, 0), index(row, 4)); }

private:
    const JobModel* jobs;
};

} // namespace

class TableExPage : public QWidget
{
    Q_OBJECT
public:
    TableExPage()
    {
        auto* root = new EVRootBoxLayout(this);
        auto* intro = new QLabel(QStringLiteral(
            "An ETableEx with every kind of cell: click a check box, make a Protocol cell current to open "
            "its combo box (arrow keys only step, Enter or a mouse choice takes the value), double-click a "
            "Note to edit it, and a Retries cell to spin it (every step is taken at once). The bars move "
            "from a timer. On the right, the model's values as plain text."), this);
        intro->setWordWrap(true);
        root->addWidget(intro);

        auto* splitter = new QSplitter(this);
        jobs = new JobModel(this);
        table = new ETableEx(0x3f, jobs, false, splitter);
        table->setObjectName(QStringLiteral("jobs"));
        const QFontMetrics metrics(ETableModel::fontRole());
        const int widths[Columns] = {metrics.horizontalAdvance(QStringLiteral("backup-00")) + 16,
                                     metrics.horizontalAdvance(titles[Enabled]) + 16,
                                     metrics.horizontalAdvance(titles[Protocol]) + 24, 90, 110,
                                     metrics.horizontalAdvance(titles[Retries]) + 16};
        for (int c = 0; c < Columns; ++c)
            table->setColumnWidth(c, widths[c]);
        table->setWideColumn(Note, true);
        auto* values = new ValuesModel(jobs, this);
        auto* mirror = new ETable(values, false, splitter);
        mirror->setObjectName(QStringLiteral("values"));
        mirror->resizeColumnsToContents();
        mirror->setWideColumn(3, true);
        splitter->setStretchFactor(0, 1);
        splitter->setSizes({560, 240});
        root->addWidget(splitter, 1);

        connect(jobs, &QAbstractItemModel::dataChanged, this,
                [values](const QModelIndex& from, const QModelIndex& to) {
                    if (from.column() != Progress || to.column() != Progress)
                        for (int r = from.row(); r <= to.row(); ++r)
                            values->refresh(r);
                });
        table->setCurrentIndex(jobs->index(1, Protocol)); // show one open combo editor

        auto* timer = new QTimer(this);
        connect(timer, &QTimer::timeout, jobs, &JobModel::advance);
        timer->start(100);
    }

private:
    JobModel* jobs = nullptr;
    ETableEx* table = nullptr;
};

GALLERY_PAGE(52, "tableex", "Extended table", [] { return new TableExPage; });

#include "page_tableex.moc"
