// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#include "etag.h"

const QString ETag::empty;

const ETag* ETag::find(const QString& text) const
{
    for (const ETag* t = this; t->text; ++t) {
        if (*t->text == text)
            return t;
    }
    return nullptr;
}

const ETag* ETag::find(int value) const
{
    for (const ETag* t = this; t->text; ++t) {
        if (t->value == value)
            return t;
    }
    return nullptr;
}

int ETag::getValue(const QString& text, int def) const
{
    const ETag* t = find(text);
    return t ? t->value : def;
}

const QString& ETag::getText(int value, const QString& def) const
{
    const ETag* t = find(value);
    return t ? *t->text : def;
}
