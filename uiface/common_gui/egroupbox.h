// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#pragma once

#include "common_gui_export.h"

#include <QGroupBox>

class QLayout;

/// A titled box whose layout is a box layout, by default an EVGroupBoxLayout (margins 8, 4, 8, 8).
///
/// \code
/// auto* box = new EGroupBox(QStringLiteral("Connection"));
/// box->addWidget(hostPair);
/// box->addWidget(portPair);
/// root->addWidget(box);
/// \endcode
class COMMON_GUI_EXPORT EGroupBox : public QGroupBox
{
    Q_OBJECT
public:
    /// Installs \a layout, which should be a QBoxLayout; null installs a new EVGroupBoxLayout.
    explicit EGroupBox(const QString& title = QString(), QLayout* layout = nullptr,
                       QWidget* parent = nullptr);

    // These forward to the box's layout; they do nothing when the layout is not a QBoxLayout.
    void addLayout(QLayout* l, int stretch = 0);
    void addWidget(QWidget* w, int stretch = 0, Qt::Alignment a = Qt::Alignment());
    void addSpacing(int size);
    void addStretch(int stretch = 0);
};
