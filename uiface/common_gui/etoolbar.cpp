// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#include "etoolbar.h"

#include "eresource.h"
#include "esettings.h"

#include <QKeySequence>
#include <QLayout>

// ---------------------------------------------------------------------------------------------------------
// EToolBarOptions

namespace {

const QString optionsGroup()
{
    return QStringLiteral("EToolBar");
}

/// The integer under \a key, or \a fallback when it is missing, not a number or outside the range.
int readInt(const QSettings& s, const QString& key, int fallback, int low, int high)
{
    bool ok = false;
    const int value = s.value(key).toInt(&ok);
    return ok && value >= low && value <= high ? value : fallback;
}

} // namespace

EToolBarOptions EToolBarOptions::load()
{
    EToolBarOptions options;
    ESettings s(optionsGroup());
    options.iconSize = readInt(s, QStringLiteral("IconSize"), BIG_ICON_SIZE, 1, 256);
    options.buttonStyle = readInt(s, QStringLiteral("ButtonStyle"), Qt::ToolButtonTextUnderIcon,
                                  Qt::ToolButtonIconOnly, Qt::ToolButtonFollowStyle);
    return options;
}

void EToolBarOptions::save()
{
    ESettings s(optionsGroup());
    s.setValue(QStringLiteral("IconSize"), iconSize);
    s.setValue(QStringLiteral("ButtonStyle"), buttonStyle);
}

// ---------------------------------------------------------------------------------------------------------
// EToolBar

QIcon (*EToolBar::iconLoader)(int) = defaultIconLoader;

EToolBar::EToolBar(QWidget* parent, EToolBar::Style style)
    : QToolBar(parent)
{
    setMovable(false);
    setFloatable(false);
    if (style == Main) {
        setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
        setIconSize(QSize(EToolBarOptions::BIG_ICON_SIZE, EToolBarOptions::BIG_ICON_SIZE));
        const EToolBarOptions options = EToolBarOptions::load();
        setIconSize(QSize(options.iconSize, options.iconSize));
        setToolButtonStyle(Qt::ToolButtonStyle(options.buttonStyle));
    } else {
        setIconSize(QSize(24, 24));
        setToolButtonStyle(Qt::ToolButtonIconOnly);
    }
    setStyleSheet(QStringLiteral("QToolBar { border: 0px none black; }"));
}

EToolBar::~EToolBar()
{
    for (const Entry& entry : entries)
        delete entry.action;
}

void EToolBar::setIconLoader(QIcon (*loader)(int))
{
    iconLoader = loader ? loader : defaultIconLoader;
}

void EToolBar::fill(QObject* receiver, EToolBarItemData* items, int n)
{
    if (!items || n < 0)
        n = 0;
    entries.reserve(entries.size() + size_t(n));
    for (int i = 0; i < n; ++i) {
        const EToolBarItemData& item = items[i];
        Entry entry;
        if (item.icon < 0) {
            addSeparator();
        } else {
            entry.id = item.id;
            entry.action = new QAction(item.text ? *item.text : QString(), this);
            if (receiver && item.slot)
                connect(entry.action, SIGNAL(triggered()), receiver, item.slot);
            addAction(entry.action);
            entry.action->setIcon(iconLoader(item.icon));
            if (item.toolTip)
                entry.action->setToolTip(*item.toolTip);
            if (item.shortcut)
                entry.action->setShortcut(*item.shortcut);
        }
        entries.push_back(entry);
    }
    count = int(entries.size());
    adjustGeometry();
}

QAction* EToolBar::find(int id) const
{
    for (const Entry& entry : entries) {
        if (entry.id == id)
            return entry.action;
    }
    return nullptr;
}

void EToolBar::enableButton(int id, bool enabled)
{
    if (QAction* action = find(id))
        action->setEnabled(enabled);
}

bool EToolBar::isButtonEnabled(int id) const
{
    const QAction* action = find(id);
    return action && action->isEnabled();
}

void EToolBar::checkButton(int id, bool checked)
{
    if (QAction* action = find(id)) {
        action->setCheckable(true);
        action->setChecked(checked);
    }
}

void EToolBar::setOptions(const EToolBarOptions& options)
{
    setIconSize(QSize(options.iconSize, options.iconSize));
    setToolButtonStyle(Qt::ToolButtonStyle(options.buttonStyle));
    adjustGeometry();
}

void EToolBar::adjustGeometry()
{
    setFixedSize(sizeHint());
    if (QWidget* parent = parentWidget()) {
        if (QLayout* layout = parent->layout())
            layout->activate();
    }
}
