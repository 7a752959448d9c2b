// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
// ETable: 100,000 generated hosts searched through the find dialog, column widths kept across restarts.
#include "gallery.h"

#include "common_gui_loc.h"
#include "eboxlayout.h"
#include "ebutton.h"
#include "efind.h"
#include "emessage.h"
#include "esettings.h"
#include "etable.h"

#include <QFontMetrics>
#include <QLabel>
#include <QShortcut>

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

class TablePage : public QWidget, public EFindOwner
{
    Q_OBJECT
public:
    TablePage()
        : EFindOwner("GalleryTable")
    {
        auto* layout = new EVRootBoxLayout(this);
        auto* intro = new QLabel(QStringLiteral("An ETable over 100,000 generated rows. Find... (Ctrl+F) opens the "
                                                "find dialog; Find Next (F3) searches again with the dialog closed. "
                                                "The search goes on from the current cell; at the end it offers to "
                                                "start over from the other end. Column widths and order are saved "
                                                "under [GalleryTable]."),
                                 this);
        intro->setWordWrap(true);
        layout->addWidget(intro);

        auto* findRow = new EHBoxLayout;
        auto* findButton = new EButton(LCQT__Find, this);
        findButton->setObjectName(QStringLiteral("find"));
        auto* nextButton = new EButton(LCQT__Find_Next, this);
        nextButton->setObjectName(QStringLiteral("findNext"));
        status = new QLabel(this);
        status->setObjectName(QStringLiteral("status"));
        findRow->addWidget(findButton);
        findRow->addWidget(nextButton);
        findRow->addWidget(status, 1);
        layout->addLayout(findRow);

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

        // Every option of the dialog: match case, whole word, all columns and the direction.
        makeFindDialog(this, EFind::MatchCase | EFind::WholeWord | EFind::AllColumns | EFind::Direction,
                       "find.html");
        connect(findButton, &QPushButton::clicked, findDialog, &EFind::findFirst);
        connect(nextButton, &QPushButton::clicked, findDialog, &EFind::findNext);
        auto* first = new QShortcut(QKeySequence(Qt::CTRL | Qt::Key_F), this);
        connect(first, &QShortcut::activated, findDialog, &EFind::findFirst);
        auto* next = new QShortcut(QKeySequence(Qt::Key_F3), this);
        connect(next, &QShortcut::activated, findDialog, &EFind::findNext);
    }

    ~TablePage() override
    {
        ESettings s(group());
        table->saveState(s, "Columns");
    }

    /// The table searches but never wraps around: the owner asks, as the text editor does.
    bool find() override
    {
        const QString text = findDialog->getText();
        const Qt::CaseSensitivity cs = findDialog->getCaseSensitive() ? Qt::CaseSensitive : Qt::CaseInsensitive;
        const int direction = findDialog->getDirection();
        const auto search = [&](bool fromStart) {
            return table->find(text, cs, findDialog->getWholeWord(), findDialog->getAllColumns(), direction,
                               fromStart);
        };
        bool found = search(false);
        if (!found && table->currentRow() >= 0) {
            if (!EMessage::warn(this, direction < 0 ? LCQT__Text_not_found_above_this_point
                                                    : LCQT__Text_not_found_below_this_point)) {
                if (findDialog->isVisible())
                    findDialog->hide();
                return false;
            }
            found = search(true);
        }
        if (!found) {
            status->setText(LCQT__Text_not_found);
            EMessage::erro(this, LCQT__Text_not_found);
            return false;
        }
        table->scrollTo(table->selectionModel()->currentIndex());
        status->setText(QStringLiteral("Found in row %1, column %2").arg(table->currentRow() + 1).arg(table->currentColumn() + 1));
        return true;
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
    QLabel* status = nullptr;
    ETable* table = nullptr;
};

GALLERY_PAGE(50, "table", "Table", [] { return new TablePage; });

#include "page_table.moc"
