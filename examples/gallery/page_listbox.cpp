// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#include "gallery.h"

#include "ebox.h"
#include "eboxlayout.h"

#include <QGridLayout>
#include <QItemSelectionModel>
#include <QLabel>
#include <QPixmap>
#include <QPushButton>
#include <QStyle>
#include <QVBoxLayout>

#include <vector>

namespace {

class ListBoxPage : public QWidget
{
    Q_OBJECT
public:
    ListBoxPage()
    {
        // The items only point at their icons: the page keeps the pixmaps alive.
        m_computer = style()->standardIcon(QStyle::SP_ComputerIcon).pixmap(16, 16);
        m_drive = style()->standardIcon(QStyle::SP_DriveNetIcon).pixmap(16, 16);

        m_left = new EBox(this);
        m_left->setObjectName(QStringLiteral("available"));
        m_right = new EBox(this);
        m_right->setObjectName(QStringLiteral("chosen"));
        for (EBox* box : {m_left, m_right})
            box->setSelectionMode(QAbstractItemView::ExtendedSelection);

        EBoxModel* model = m_left->boxModel();
        model->beginChanges();
        const char* const hosts[] = {"gateway-01", "gateway-02", "Backup server", "mail relay",
                                     "DNS primary", "dns secondary", "Log collector", "vpn-hub",
                                     "Certificate authority", "time source", "proxy", "Token service"};
        int id = 1;
        for (const char* host : hosts) {
            const QPixmap* icon = (id % 3 == 0) ? &m_drive : &m_computer;
            model->append(new EBoxItem(icon, QString::fromUtf8(host), id++));
        }
        model->endChanges();
        m_right->boxModel()->insert(0, QStringList{QStringLiteral("workstation-17")});

        m_left->selectRange(1, 3);
        m_left->setSelected(6, true);

        auto* grid = new QGridLayout(this);
        grid->setContentsMargins(8, 8, 8, 8);
        grid->setSpacing(8);
        grid->addWidget(new QLabel(QStringLiteral("Available hosts"), this), 0, 0);
        grid->addWidget(new QLabel(QStringLiteral("Chosen hosts"), this), 0, 2);
        grid->addWidget(m_left, 1, 0);
        grid->addWidget(m_right, 1, 2);

        auto* buttons = new EVBoxLayout;
        auto button = [this, buttons](const char* name, const char* text, auto&& action) {
            auto* b = new QPushButton(QString::fromUtf8(text), this);
            b->setObjectName(QLatin1String(name));
            connect(b, &QPushButton::clicked, this, action);
            buttons->addWidget(b);
        };
        button("up", "Move up", [this] { m_left->boxModel()->moveSelected(-1); });
        button("down", "Move down", [this] { m_left->boxModel()->moveSelected(1); });
        button("choose", "Choose >>", [this] { m_left->boxModel()->moveSelectedTo(m_right->boxModel()); });
        button("giveBack", "<< Give back", [this] { m_right->boxModel()->moveSelectedTo(m_left->boxModel()); });
        button("remove", "Remove", [this] { removeSelected(m_left); });
        button("sortUp", "Sort A-Z", [this] { m_left->boxModel()->sort(0, Qt::AscendingOrder); });
        button("sortDown", "Sort Z-A", [this] { m_left->boxModel()->sort(0, Qt::DescendingOrder); });
        buttons->addStretch(1);
        grid->addLayout(buttons, 1, 1);

        m_status = new QLabel(this);
        m_status->setObjectName(QStringLiteral("status"));
        grid->addWidget(m_status, 2, 0, 1, 3);
        m_left->setSlotForChangeSelection(this, SLOT(showSelection()));
        m_left->setSlotForDoubleClick(this, SLOT(showEntry(QModelIndex)));
        showSelection();
    }

private slots:
    void showSelection()
    {
        m_status->setText(QStringLiteral("%1 of %2 selected; double-click a host to see its id")
                              .arg(m_left->selectedCount())
                              .arg(m_left->boxModel()->count()));
    }

    void showEntry(const QModelIndex& index)
    {
        const EBoxItem* item = m_left->boxModel()->item(index.row());
        if (item)
            m_status->setText(QStringLiteral("%1 has id %2").arg(item->text()).arg(item->id()));
    }

private:
    // removeSelected() only takes the items out of the list; the page deletes them.
    static void removeSelected(EBox* box)
    {
        std::vector<EBoxItem*> doomed;
        for (const QModelIndex& index : box->selectionModel()->selectedRows(0))
            doomed.push_back(box->boxModel()->item(index.row()));
        box->boxModel()->removeSelected();
        for (EBoxItem* item : doomed)
            delete item;
    }

    QPixmap m_computer;
    QPixmap m_drive;
    EBox* m_left = nullptr;
    EBox* m_right = nullptr;
    QLabel* m_status = nullptr;
};

} // namespace

GALLERY_PAGE(60, "listbox", "List box", [] { return new ListBoxPage; });

#include "page_listbox.moc"
