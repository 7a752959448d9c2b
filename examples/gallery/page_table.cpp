// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
// ETable: 100,000 generated hosts, a find bar driving ETable::find, column widths kept across restarts.
#include "gallery.h"

#include "common_gui_loc.h"
#include "eboxlayout.h"
#include "egroupbox.h"
#include "esettings.h"
#include "etable.h"

#include <QCheckBox>
#include <QFontMetrics>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

namespace {

const QString group()
{
    return QStringLiteral("GalleryTable");
}

/// Cells are made when asked for, so the model costs nothing however many rows it has.
class HostModel : public ETableModel
{
public:
    explicit HostModel(int rows, QObject* parent)
        : ETableModel(parent)
        , rows(rows)
    {
    }
    int getRowCount() const override { return rows; }
    int getColumnCount() const override { return 3; }
    QString getCell(int row, int column) const override
    {
        switch (column) {
        case 0:
            return QStringLiteral("host-%1.lab.example.net").arg(row, 6, 10, QLatin1Char('0'));
        case 1:
            return QStringLiteral("10.%1.%2.%3").arg((row >> 16) & 255).arg((row >> 8) & 255).arg(row & 255);
        default:
            break;
        }
        static const char* const statuses[] = {"up", "up", "down", "sub-net unreachable", "up", "maintenance"};
        return QString::fromLatin1(statuses[row % 6]);
    }
    QString getHeader(int column) const override
    {
        static const char* const titles[] = {"Host", "Address", "Status"};
        return column >= 0 && column < 3 ? QString::fromLatin1(titles[column]) : QString();
    }
    QString getCellToolTip(int row, int column) const override
    {
        return column == 0 ? QStringLiteral("Row %1").arg(row + 1) : getCell(row, column);
    }

private:
    int rows = 0;
};

} // namespace

class TablePage : public QWidget
{
    Q_OBJECT
public:
    TablePage()
    {
        auto* layout = new EVRootBoxLayout(this);
        auto* intro = new QLabel(QStringLiteral("An ETable over 100,000 generated rows. Type a text and press Find "
                                                "Next: the search goes on from the current cell and stops at the "
                                                "end; the next Find Next starts again from the other end. Column "
                                                "widths and order are saved under [GalleryTable]."),
                                 this);
        intro->setWordWrap(true);
        layout->addWidget(intro);

        auto* findRow = new QHBoxLayout;
        findRow->setSpacing(4);
        auto* findLabel = new QLabel(LCQT__Find_what, this);
        findWhat = new QLineEdit(this);
        findWhat->setObjectName(QStringLiteral("findWhat"));
        findWhat->setText(QStringLiteral("down"));
        findLabel->setBuddy(findWhat);
        auto* findButton = new QPushButton(LCQT__Find_Next__0, this);
        findButton->setObjectName(QStringLiteral("findNext"));
        findButton->setDefault(true);
        findRow->addWidget(findLabel);
        findRow->addWidget(findWhat, 1);
        findRow->addSpacing(4);
        findRow->addWidget(findButton);
        layout->addLayout(findRow);

        auto* options = new EHBoxLayout;
        auto* checks = new EVBoxLayout;
        matchCase = new QCheckBox(LCQT__Match_case, this);
        matchCase->setObjectName(QStringLiteral("matchCase"));
        wholeWord = new QCheckBox(LCQT__Match_whole_word_only, this);
        wholeWord->setObjectName(QStringLiteral("wholeWord"));
        allColumns = new QCheckBox(LCQT__Find_in_all_columns, this);
        allColumns->setObjectName(QStringLiteral("allColumns"));
        allColumns->setChecked(true);
        checks->addWidget(matchCase);
        checks->addWidget(wholeWord);
        checks->addWidget(allColumns);
        options->addLayout(checks);

        auto* directionLayout = new EBoxLayout(QBoxLayout::LeftToRight, nullptr, 8, 8, 4, 8, 8);
        auto* direction = new EGroupBox(LCQT__Direction, directionLayout, this);
        up = new QRadioButton(LCQT__Up, direction);
        up->setObjectName(QStringLiteral("up"));
        auto* down = new QRadioButton(LCQT__Down, direction);
        down->setChecked(true);
        directionLayout->addWidget(up);
        directionLayout->addWidget(down);
        options->addWidget(direction);
        options->addStretch(1);
        layout->addLayout(options);

        status = new QLabel(this);
        status->setObjectName(QStringLiteral("status"));
        layout->addWidget(status);

        table = new ETable(new HostModel(100000, this), false, this);
        table->setObjectName(QStringLiteral("table"));
        table->setMultiSelect();
        // Wide enough for the longest host name in the item font, with the cell's margins.
        const QFontMetrics item(ETableModel::fontRole());
        table->setColumnWidth(0, item.horizontalAdvance(QStringLiteral("host-000000.lab.example.net")) + 16);
        table->setColumnWidth(1, 110);
        table->setWideColumn(2, true);
        table->setHeightInRows(12);
        table->adjustSizeHint();
        {
            ESettings s(group());
            table->loadState(s, "Columns");
        }
        table->setSlotForDoubleClick(this, SLOT(showRow(const QModelIndex&)));
        table->setSlotForChangeSelection(this, SLOT(showSelection()));
        layout->addWidget(table, 1);

        connect(findButton, &QPushButton::clicked, this, &TablePage::findNext);
        connect(findWhat, &QLineEdit::returnPressed, this, &TablePage::findNext);
        connect(findWhat, &QLineEdit::textEdited, this, [this] { restart = true; });

        // Show a match in the headless screenshot too.
        findNext();
    }

    ~TablePage() override
    {
        ESettings s(group());
        table->saveState(s, "Columns");
    }

private slots:
    void showRow(const QModelIndex& index)
    {
        status->setText(QStringLiteral("Double-clicked: %1").arg(table->getText(index.row(), 0)));
    }

    void showSelection()
    {
        const QList<QPair<int, int>> ranges = table->selectedRanges();
        QStringList parts;
        for (const auto& r : ranges)
            parts << (r.first == r.second ? QString::number(r.first + 1)
                                          : QStringLiteral("%1-%2").arg(r.first + 1).arg(r.second + 1));
        status->setText(parts.isEmpty() ? QString()
                                        : QStringLiteral("Selected rows (bottom block first): %1")
                                              .arg(parts.join(QStringLiteral(", "))));
    }

private:
    void findNext()
    {
        const bool found = table->find(findWhat->text(), matchCase->isChecked() ? Qt::CaseSensitive : Qt::CaseInsensitive,
                                       wholeWord->isChecked(), allColumns->isChecked(), up->isChecked() ? -1 : 1,
                                       restart);
        if (found) {
            if (table->isVisible())
                table->scrollTo(table->selectionModel()->currentIndex());
            status->setText(QStringLiteral("Found in row %1, column %2")
                                .arg(table->currentRow() + 1)
                                .arg(table->currentColumn() + 1));
        } else {
            status->setText(LCQT__Text_not_found);
        }
        restart = !found;
    }

    QLineEdit* findWhat = nullptr;
    QCheckBox* matchCase = nullptr;
    QCheckBox* wholeWord = nullptr;
    QCheckBox* allColumns = nullptr;
    QRadioButton* up = nullptr;
    QLabel* status = nullptr;
    ETable* table = nullptr;
    bool restart = true;
};

GALLERY_PAGE(50, "table", "Table", [] { return new TablePage; });

#include "page_table.moc"
