// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
// ETree: 3,330 generated rows (zones, hosts, services) with check boxes waiting in their items until
// the rows enter the tree, combo and list cells filled from enumerators, and the header layout and
// the expanded zones kept across restarts under [GalleryTree].
#include "gallery.h"

#include "ebox.h"
#include "eboxlayout.h"
#include "echeckbox.h"
#include "ecombobox.h"
#include "esettings.h"
#include "etree.h"

#include <QHeaderView>
#include <QLabel>
#include <QPainter>
#include <QPixmap>
#include <QPushButton>

#include <vector>

namespace {

constexpr int zones = 30;
constexpr int hostsPerZone = 10;
constexpr int servicesPerHost = 10;
constexpr int flagsPerZone = 1 + hostsPerZone + hostsPerZone * servicesPerHost;

const QString group()
{
    return QStringLiteral("GalleryTree");
}

/// A small square of one colour, standing for an icon of the application.
QPixmap swatch(const QColor& colour)
{
    QPixmap p(12, 12);
    p.fill(Qt::transparent);
    QPainter painter(&p);
    painter.setPen(colour.darker(160));
    painter.setBrush(colour);
    painter.drawRoundedRect(QRectF(0.5, 0.5, 11, 11), 3, 3);
    return p;
}

/// Hands a fixed list of names to a tree cell; every name gets the same icon.
class NameEnumerator : public EEnumerator
{
public:
    NameEnumerator(QStringList names, const QPixmap* icon, QString listText)
        : names(std::move(names))
        , icon(icon)
        , listText(std::move(listText))
    {
    }
    const QPixmap* getIcon() override { return icon; }
    QString getText() override { return names.at(at); }
    void* getData() override { return nullptr; }
    int getId() override { return at; }
    bool next() override { return ++at < names.size(); }
    QString getListText() override { return listText; }

private:
    QStringList names;
    const QPixmap* icon = nullptr;
    QString listText;
    int at = -1;
};

const QStringList protocols{QStringLiteral("tcp"), QStringLiteral("udp"), QStringLiteral("icmp"),
                            QStringLiteral("esp"), QStringLiteral("ah"), QStringLiteral("gre")};

} // namespace

class TreePage : public QWidget
{
    Q_OBJECT
public:
    TreePage()
        : hostIcon(swatch(QColor(70, 130, 180)))
        , serviceIcon(swatch(QColor(60, 170, 90)))
    {
        auto* root = new EVRootBoxLayout(this);
        auto* intro = new QLabel(QStringLiteral(
            "An ETree of 3,330 generated rows. Each zone's check box was given to its row before the "
            "row entered the tree; the protocol cells are combo boxes and the address lists list boxes, "
            "filled from enumerators (a single address is plain text with its icon). Column widths and "
            "the expanded rows are kept across restarts; the expanded state is read back level by level, "
            "so all hosts of a zone open or close together, as its first host was."), this);
        intro->setWordWrap(true);
        root->addWidget(intro);

        const QString object = QStringLiteral("Object"), value = QStringLiteral("Value"), kind = QStringLiteral("Kind");
        const QString* headers[] = {&object, &value, &kind, nullptr};
        tree = new ETree(headers, this);
        tree->setObjectName(QStringLiteral("tree"));
        tree->setUniformRowHeights(false);
        tree->header()->resizeSection(0, 220);
        tree->header()->resizeSection(1, 200);
        fill();
        {
            ESettings s(group());
            tree->loadState(s, "Columns");
            // One '0' or '1' per row, zone after zone in pre-order; anything else reads as nothing saved.
            const QString flags = s.value(QStringLiteral("Expanded")).toString();
            if (flags.size() == zones * flagsPerZone
                && flags.count(QLatin1Char('0')) + flags.count(QLatin1Char('1')) == flags.size()) {
                for (int z = 0; z < zones; ++z) {
                    QVector<bool> states;
                    for (int i = 0; i < flagsPerZone; ++i)
                        states << (flags.at(z * flagsPerZone + i) == QLatin1Char('1'));
                    static_cast<ETreeItem*>(tree->topLevelItem(z))->loadExpandState(states);
                }
            } else {
                tree->topLevelItem(0)->setExpanded(true);
                tree->topLevelItem(0)->child(0)->setExpanded(true);
            }
        }
        root->addWidget(tree, 1);

        auto* buttons = new EHBoxLayout;
        auto* showKind = new ECheckBox(QStringLiteral("Show the Kind column"), this);
        showKind->setChecked(true);
        connect(showKind, &QCheckBox::toggled, this, [this](bool on) { tree->showColumn(2, on); });
        auto* pick = new QPushButton(QStringLiteral("Select the last host"), this);
        connect(pick, &QPushButton::clicked, this, [this] {
            QTreeWidgetItem* zone = tree->topLevelItem(zones - 1);
            zone->setExpanded(true);
            tree->selectRow(zone->child(hostsPerZone - 1));
            tree->scrollToItem(tree->currentItem());
        });
        buttons->addWidget(showKind);
        buttons->addWidget(pick);
        buttons->addStretch(1);
        root->addLayout(buttons);

        status = new QLabel(this);
        status->setObjectName(QStringLiteral("status"));
        root->addWidget(status);
        tree->setSlotForDoubleClick(this, [this](QTreeWidgetItem* item, int column) {
            status->setText(QStringLiteral("Double-clicked %1, column %2").arg(item->text(0)).arg(column + 1));
        });
        tree->setSlotForChangeCurrent(this, SLOT(showCurrent(QTreeWidgetItem*, QTreeWidgetItem*)));
    }

    ~TreePage() override
    {
        ESettings s(group());
        tree->saveState(s, "Columns");
        QString flags;
        for (int z = 0; z < tree->topLevelItemCount(); ++z) {
            QVector<bool> states;
            static_cast<ETreeItem*>(tree->topLevelItem(z))->saveExpandState(states);
            for (bool on : states)
                flags += on ? QLatin1Char('1') : QLatin1Char('0');
        }
        s.setValue(QStringLiteral("Expanded"), flags);
    }

private slots:
    void showCurrent(QTreeWidgetItem* current, QTreeWidgetItem*)
    {
        auto* item = static_cast<ETreeItem*>(current);
        const int* number = item ? static_cast<const int*>(item->getUserData()) : nullptr;
        status->setText(number ? QStringLiteral("Current: %1 (row number %2)").arg(item->text(0)).arg(*number)
                               : QString());
    }

private:
    void fill()
    {
        numbers.resize(zones * (1 + hostsPerZone * (1 + servicesPerHost)));
        int n = 0;
        QList<QTreeWidgetItem*> top;
        for (int z = 0; z < zones; ++z) {
            auto* zone = new ETreeItem(QStringList{QStringLiteral("zone-%1").arg(z + 1, 2, 10, QLatin1Char('0')),
                                                   QString(), QStringLiteral("zone")});
            numbers[n] = n;
            zone->setUserData(&numbers[n++]);
            // Pending until the zone enters the tree; addTopLevelItems hands it over.
            zone->setCustomWidget(1, new ECheckBox(QStringLiteral("Enabled")));
            for (int h = 0; h < hostsPerZone; ++h) {
                auto* host = new ETreeItem(QStringList{QStringLiteral("host-%1-%2.lab").arg(z + 1).arg(h + 1),
                                                       QString(), QStringLiteral("host")});
                host->setIcon(0, QIcon(hostIcon));
                numbers[n] = n;
                host->setUserData(&numbers[n++]);
                for (int s = 0; s < servicesPerHost; ++s) {
                    auto* service = new ETreeItem(QStringList{QStringLiteral("service %1").arg(s + 1), QString(),
                                                              QStringLiteral("service")});
                    numbers[n] = n;
                    service->setUserData(&numbers[n++]);
                    service->toolTipsAsTexts();
                    host->addChild(service);
                }
                zone->addChild(host);
            }
            top << zone;
        }
        tree->addTopLevelItems(top);

        // Cells from enumerators, once the rows are in the tree: a combo per host of the first
        // zones, an address list on some services, a single address as plain text elsewhere.
        for (int z = 0; z < 3; ++z) {
            QTreeWidgetItem* zone = tree->topLevelItem(z);
            for (int h = 0; h < hostsPerZone; ++h) {
                NameEnumerator choices(protocols, nullptr, QString());
                tree->addCombo(zone->child(h), 1, choices);
                static_cast<EComboBox*>(tree->itemWidget(zone->child(h), 1))->setCurrentIndex(h % protocols.size());
                for (int s = 0; s < servicesPerHost; ++s) {
                    QTreeWidgetItem* service = zone->child(h)->child(s);
                    QStringList addresses;
                    for (int a = 0; a <= (s % 4 == 0 ? 2 : 0); ++a)
                        addresses << QStringLiteral("10.%1.%2.%3").arg(z).arg(h).arg(s * 10 + a);
                    NameEnumerator list(addresses, &serviceIcon, QStringLiteral("%1 addresses").arg(addresses.size()));
                    tree->addList(service, 1, list);
                    if (QWidget* box = tree->itemWidget(service, 1))
                        box->setFixedHeight(3 * QFontMetrics(ETreeItem::itemFont()).height() + 8);
                }
            }
        }
    }

    QPixmap hostIcon;
    QPixmap serviceIcon;
    std::vector<int> numbers;
    ETree* tree = nullptr;
    QLabel* status = nullptr;
};

GALLERY_PAGE(62, "tree", "Tree", [] { return new TreePage; });

#include "page_tree.moc"
