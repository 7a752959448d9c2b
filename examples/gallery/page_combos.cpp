// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
// EComboBox filled from enumerators and addressed by id, data and text; EComboState remembering
// what was entered across restarts of the gallery.
#include "gallery.h"

#include "ebox.h"
#include "eboxlayout.h"
#include "ecombobox.h"
#include "egroupbox.h"

#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSpinBox>
#include <QVBoxLayout>

namespace {

struct Service
{
    const char* name;
    int port;
};

const Service services[] = {{"SSH", 22},  {"https", 443}, {"DNS", 53},    {"ftp", 21},
                            {"IKE", 500}, {"smtp", 25},   {"Telnet", 23}, {"http", 80}};

/// Hands the service table to a combo: ids are the port numbers, data the table rows.
class ServiceEnumerator : public EEnumerator
{
public:
    const QPixmap* getIcon() override { return nullptr; }
    QString getText() override { return QString::fromLatin1(services[at].name); }
    void* getData() override { return const_cast<Service*>(&services[at]); }
    int getId() override { return services[at].port; }
    bool next() override { return ++at < int(sizeof(services) / sizeof(services[0])); }
    QString getListText() override { return QStringLiteral("services"); }

private:
    int at = -1;
};

QGroupBox* group(const QString& title, QLayout* content, QWidget* parent)
{
    auto* box = new EGroupBox(title, nullptr, parent);
    box->addLayout(content);
    return box;
}

} // namespace

class ComboPage : public QWidget
{
    Q_OBJECT
public:
    ComboPage()
    {
        auto* layout = new EVRootBoxLayout(this);

        // Filled from the same enumerator, as given and sorted by text (case ignored).
        auto* filled = new QFormLayout;
        auto* asGiven = new EComboBox(this);
        asGiven->setObjectName(QStringLiteral("asGiven"));
        ServiceEnumerator first;
        asGiven->addId(first, false);
        ports = new EComboBox(this);
        ports->setObjectName(QStringLiteral("sorted"));
        ServiceEnumerator second;
        ports->addId(second, true);
        const int https = ports->setCurrentId(443);
        portLabel = new QLabel(this);
        filled->addRow(QStringLiteral("As given:"), asGiven);
        filled->addRow(QStringLiteral("Sorted:"), ports);
        filled->addRow(QStringLiteral("Current id:"), portLabel);
        ports->setSlotForChangeSelection(this, SLOT(showPort()));
        layout->addWidget(group(QStringLiteral("Filled from an enumerator"), filled, this));

        // The setters: an unknown id clears the choice, unknown data keeps it, an unknown text
        // only edits an editable combo.
        auto* setters = new EVBoxLayout;
        auto* idRow = new EHBoxLayout;
        auto* id = new QSpinBox(this);
        id->setRange(0, 1000);
        id->setValue(22);
        auto* setId = new QPushButton(QStringLiteral("setCurrentId"), this);
        idRow->addWidget(id);
        idRow->addWidget(setId);
        idRow->addStretch(1);
        setters->addLayout(idRow);

        byData = new EComboBox(this);
        byData->setObjectName(QStringLiteral("byData"));
        ServiceEnumerator third;
        byData->add(third, false);
        byData->setCurrentData(&services[4]);
        auto* dataRow = new EHBoxLayout;
        auto* knownData = new QPushButton(QStringLiteral("setCurrentData(DNS row)"), this);
        auto* unknownData = new QPushButton(QStringLiteral("setCurrentData(unknown)"), this);
        dataRow->addWidget(byData);
        dataRow->addWidget(knownData);
        dataRow->addWidget(unknownData);
        dataRow->addStretch(1);
        setters->addLayout(dataRow);

        editable = new EComboBox(this);
        editable->setEditable(true);
        ServiceEnumerator fourth;
        editable->addId(fourth, true);
        auto* textRow = new EHBoxLayout;
        auto* text = new QLineEdit(QStringLiteral("ftp"), this);
        auto* setTextFixed = new QPushButton(QStringLiteral("setCurrentText (sorted)"), this);
        auto* setTextEditable = new QPushButton(QStringLiteral("setCurrentText (editable)"), this);
        textRow->addWidget(text);
        textRow->addWidget(setTextFixed);
        textRow->addWidget(editable);
        textRow->addWidget(setTextEditable);
        setters->addLayout(textRow);
        result = new QLabel(this);
        result->setObjectName(QStringLiteral("result"));
        setters->addWidget(result);
        layout->addWidget(group(QStringLiteral("Id, data and text"), setters, this));

        connect(setId, &QPushButton::clicked, this, [this, id] {
            report(QStringLiteral("setCurrentId(%1)").arg(id->value()), ports->setCurrentId(id->value()));
        });
        connect(knownData, &QPushButton::clicked, this, [this] {
            report(QStringLiteral("setCurrentData(DNS row)"), byData->setCurrentData(&services[2]));
        });
        connect(unknownData, &QPushButton::clicked, this, [this] {
            static const int stranger = 0;
            report(QStringLiteral("setCurrentData(unknown)"), byData->setCurrentData(&stranger));
        });
        connect(setTextFixed, &QPushButton::clicked, this, [this, text] {
            report(QStringLiteral("setCurrentText(\"%1\") on the sorted combo").arg(text->text()),
                   ports->setCurrentText(text->text()));
        });
        connect(setTextEditable, &QPushButton::clicked, this, [this, text] {
            report(QStringLiteral("setCurrentText(\"%1\") on the editable combo").arg(text->text()),
                   editable->setCurrentText(text->text()));
        });

        // Remembered texts: Enter records the text; the list is saved when the page closes.
        auto* remembered = new EVBoxLayout;
        auto* hint = new QLabel(QStringLiteral("Type a host and press Enter. The 64 most recent texts come back "
                                               "after a restart, most recent first, under "
                                               "[EComboStatePair_ComboPage]."),
                                this);
        hint->setWordWrap(true);
        history = new EComboState(this, QStringLiteral("GalleryHosts"));
        history->setObjectName(QStringLiteral("history"));
        history->setSlotForActivateText(this, SLOT(remember()));
        historyLabel = new QLabel(this);
        remembered->addWidget(hint);
        remembered->addWidget(history);
        remembered->addWidget(historyLabel);
        layout->addWidget(group(QStringLiteral("Remembered texts"), remembered, this));
        layout->addStretch(1);

        showPort();
        showHistory(QString());
        report(QStringLiteral("setCurrentId(443)"), https);
    }

private slots:
    void showPort()
    {
        portLabel->setText(ports->getCurrentId() < 0 ? QStringLiteral("none")
                                                     : QString::number(ports->getCurrentId()));
    }

    void remember()
    {
        const QString text = history->currentText();
        history->setEditText(text);
        showHistory(text);
    }

private:
    void report(const QString& call, int answer)
    {
        result->setText(QStringLiteral("%1 returned %2").arg(call).arg(answer));
    }

    void showHistory(const QString& entered)
    {
        const QString count = QStringLiteral("%1 remembered text(s)").arg(history->count());
        historyLabel->setText(entered.isEmpty() ? count : QStringLiteral("Entered \"%1\"; %2").arg(entered, count));
    }

    EComboBox* ports = nullptr;
    EComboBox* byData = nullptr;
    EComboBox* editable = nullptr;
    QLabel* portLabel = nullptr;
    QLabel* result = nullptr;
    EComboState* history = nullptr;
    QLabel* historyLabel = nullptr;
};

GALLERY_PAGE(55, "combos", "Combo boxes", [] { return new ComboPage; });

#include "page_combos.moc"
