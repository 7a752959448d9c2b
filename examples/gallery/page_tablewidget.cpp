// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
// ETableWidget: a "Parameter" / "Value" table filled cell by cell, sortable by clicking a title, and a
// three-column one that is rebuilt with resetModel.
#include "gallery.h"

#include "eboxlayout.h"
#include "egroupbox.h"
#include "etablewidget.h"
#include "etablewidgetmodel.h"

#include <QLabel>
#include <QPushButton>
#include <QStyle>
#include <QSysInfo>

namespace {

struct Parameter
{
    const char* name;
    QString value;
    const char* tip;
};

} // namespace

class TableWidgetPage : public QWidget
{
    Q_OBJECT
public:
    TableWidgetPage()
    {
        okIcon = style()->standardIcon(QStyle::SP_DialogApplyButton).pixmap(16, 16);
        auto* root = new EVRootBoxLayout(this);
        auto* intro = new QLabel(QStringLiteral(
            "ETableWidget keeps its cells itself. Click a column title to sort by it (plain character "
            "order: capitals first); hover a value to see its tool tip."), this);
        intro->setWordWrap(true);
        root->addWidget(intro);

        parameters = new ETableWidget(this, 2, nullptr);
        parameters->setObjectName(QStringLiteral("parameters"));
        const Parameter rows[] = {
            {"Product", QStringLiteral("common_gui gallery"), nullptr},
            {"Qt version", QString::fromLatin1(qVersion()), "The Qt library the gallery runs on"},
            {"Kernel", QSysInfo::kernelType() + QLatin1Char(' ') + QSysInfo::kernelVersion(), nullptr},
            {"CPU architecture", QSysInfo::currentCpuArchitecture(), nullptr},
            {"Operating system", QSysInfo::prettyProductName(), nullptr},
            {"Host name", QSysInfo::machineHostName(), nullptr},
            {"Gateway", QStringLiteral("10.0.0.1"), "Reached over the lab network"},
            {"DNS server", QStringLiteral("10.0.0.53"), nullptr},
            {"Policy", QStringLiteral("default-deny"), "Everything not allowed is refused"},
            {"Tunnel", QStringLiteral("up"), nullptr},
            {"Certificates", QStringLiteral("12"), nullptr},
            {"audit log", QStringLiteral("enabled"), nullptr},
        };
        ETableWidgetModel* model = parameters->widgetModel();
        for (const Parameter& p : rows) {
            const int row = model->addRow();
            parameters->setCell(row, 0, QString::fromUtf8(p.name), nullptr, nullptr);
            QPixmap* icon = p.value == QLatin1String("up") || p.value == QLatin1String("enabled") ? &okIcon : nullptr;
            parameters->setCell(row, 1, p.value, icon, nullptr);
            if (p.tip)
                model->cell(row, 1)->setToolTip(QString::fromUtf8(p.tip));
        }
        parameters->setSortingEnabled(true);
        parameters->sortByColumn(0, Qt::AscendingOrder);
        parameters->setHeightInRows(12);
        root->addWidget(parameters, 1);

        auto* box = new EGroupBox(QStringLiteral("Rebuilt with resetModel"), nullptr, this);
        ports = new ETableWidget(nullptr, 3, nullptr);
        ports->setObjectName(QStringLiteral("ports"));
        ports->setHeightInRows(5);
        box->addWidget(ports);
        auto* again = new QPushButton(QStringLiteral("Rebuild"), box);
        box->addWidget(again, 0, Qt::AlignLeft);
        root->addWidget(box);
        connect(again, &QPushButton::clicked, this, &TableWidgetPage::rebuild);
        rebuild();
    }

private:
    void rebuild()
    {
        ports->resetModel(3, portTitles);
        ETableWidgetModel* model = ports->widgetModel();
        const int count = 4 + generation++ % 3;
        model->addRows(count);
        for (int r = 0; r < count; ++r) {
            ports->setCell(r, 0, QString::number(1000 + r * 7 + generation), nullptr, nullptr);
            ports->setCell(r, 1, r % 2 ? QStringLiteral("udp") : QStringLiteral("tcp"), nullptr, nullptr);
            ports->setCell(r, 2, QStringLiteral("listener %1").arg(r + 1), nullptr, nullptr);
        }
        ports->setSortingEnabled(true);
    }

    const QString port = QStringLiteral("Port"), protocol = QStringLiteral("Protocol"), owner = QStringLiteral("Owner");
    const QString* portTitles[3] = {&port, &protocol, &owner};
    QPixmap okIcon;
    ETableWidget* parameters = nullptr;
    ETableWidget* ports = nullptr;
    int generation = 0;
};

GALLERY_PAGE(54, "tablewidget", "Table widget", [] { return new TableWidgetPage; });

#include "page_tablewidget.moc"
