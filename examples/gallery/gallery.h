// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#pragma once

#include <QList>
#include <QString>
#include <QWidget>

#include <functional>
#include <vector>

/// One page of the gallery: a widget family a person can see and try.
struct GalleryPage
{
    int order = 0;          ///< position in the page list (ascending)
    QString id;             ///< file-name-safe id, used for the headless PNG
    QString title;          ///< shown in the page list
    std::function<QWidget*()> make;
    /// Optional: opens the page's own windows (given the page) for the headless run, which
    /// captures each of them after the page and then deletes them.
    std::function<QList<QWidget*>(QWidget*)> windows;
};

/// Pages register themselves from their own source file with GALLERY_PAGE.
std::vector<GalleryPage>& galleryPages();
bool registerGalleryPage(int order, const char* id, const char* title, std::function<QWidget*()> make,
                         std::function<QList<QWidget*>(QWidget*)> windows = {});

#define GALLERY_PAGE_CAT2(a, b) a##b
#define GALLERY_PAGE_CAT(a, b) GALLERY_PAGE_CAT2(a, b)
/// GALLERY_PAGE(20, "messages", "Message boxes", [] { return new MessagesPage; });
#define GALLERY_PAGE(order, id, title, ...)                                                        \
    static const bool GALLERY_PAGE_CAT(galleryPageRegistered_, __LINE__) =                         \
        registerGalleryPage(order, id, title, __VA_ARGS__)
