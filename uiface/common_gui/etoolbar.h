// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#pragma once

#include "common_gui_export.h"

#include <QIcon>
#include <QToolBar>

#include <vector>

class QKeySequence;
class QString;

/// One position of a toolbar table. A negative \a icon makes the record a separator.
struct EToolBarItemData
{
    int id;                       ///< the command id of the button
    int icon;                     ///< the icon id given to the icon loader; negative: a separator
    const QString* text;          ///< the button's text; null for none
    const char* slot;             ///< SLOT(...) of the receiver, called when the button is triggered
    const QString* toolTip;       ///< null for none
    const QKeySequence* shortcut; ///< null for none
};

/// The user's toolbar preferences, kept in group "EToolBar" of the settings file.
struct COMMON_GUI_EXPORT EToolBarOptions
{
    static constexpr int SMALL_ICON_SIZE = 16;
    static constexpr int BIG_ICON_SIZE = 25;

    int iconSize = BIG_ICON_SIZE;                ///< the edge of the icons in pixels
    int buttonStyle = Qt::ToolButtonTextUnderIcon; ///< a Qt::ToolButtonStyle

    /// "IconSize" (default 25) and "ButtonStyle" (default 3, text under the icon). A value that is
    /// not a number, an icon size outside 1..256 or an unknown style reads as its default.
    static EToolBarOptions load();
    /// Writes both values under the same keys.
    void save();
};

/// A toolbar filled once from a static table; buttons are addressed by command id.
///
/// \code
/// static const QString openText = QStringLiteral("Open");
/// static EToolBarItemData items[] = {
///     {CmdOpen, CgIcon::TbOpen, &openText, SLOT(open()), nullptr, nullptr},
///     {0, -1, nullptr, nullptr, nullptr, nullptr},            // a separator
/// };
/// auto* bar = new EToolBar(this, EToolBar::Main);           // icon size and style from the settings
/// bar->fill(this, items, int(std::size(items)));
/// bar->enableButton(CmdOpen, false);
/// \endcode
class COMMON_GUI_EXPORT EToolBar : public QToolBar
{
    Q_OBJECT
public:
    /// Main: the look follows EToolBarOptions. Small: 24-pixel icons without text.
    enum Style { Main = 0, Small = 1 };

    /// Not movable, not floatable, without a frame.
    EToolBar(QWidget* parent, EToolBar::Style style);
    /// Deletes the actions made by fill().
    ~EToolBar() override;

    /// The loader of every later fill(); null restores the default (the library's icon table).
    static void setIconLoader(QIcon (*loader)(int));

    /// Adds one button or separator per record, each button wired to its slot of \a receiver,
    /// then adjustGeometry(). A second fill appends its records after the first's.
    /// A null text or tool tip is none; an icon id the loader does not know gives a button without
    /// an icon.
    void fill(QObject* receiver, EToolBarItemData* items, int n);

    /// The action of the first button with \a id; null for none (separators have no action).
    QAction* find(int id) const;
    /// setEnabled() on the button with \a id, if any.
    void enableButton(int id, bool enabled);
    /// False for an unknown id, else whether the button is enabled.
    bool isButtonEnabled(int id) const;
    /// Makes the button with \a id checkable and checks or unchecks it; nothing for an unknown id.
    void checkButton(int id, bool checked);

    /// Applies \a options (icon size, button style) at once, then adjustGeometry(). The toolbar
    /// does not re-read the settings by itself.
    void setOptions(const EToolBarOptions& options);

    /// One toolbar position: the button's action and id, or null and -1 for a separator.
    struct Entry
    {
        QAction* action = nullptr;
        int id = -1;
    };

    std::vector<Entry> entries = {}; ///< one per record given to fill()
    int count = 0;                   ///< the number of entries

public slots:
    /// Fixes the toolbar's size to its size hint and re-lays out its parent widget.
    virtual void adjustGeometry();

private:
    static QIcon (*iconLoader)(int);
};
