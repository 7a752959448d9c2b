// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#pragma once

#include "common_gui_export.h"
#include "platform/convi.h"

#include <pthread.h>

class QString;

/// Turns text in a chosen code page into a QString. One transcoder may be shared between threads:
/// setEncoding() and doTranscode() take turns on one lock held for the whole conversion.
///
/// \code
/// ETranscoder transcoder;
/// transcoder.setEncoding(CP_WINDOWS1251);
/// QString text = transcoder.doTranscode(bytes.constData(), unsigned(bytes.size()));
/// \endcode
class COMMON_GUI_EXPORT ETranscoder
{
public:
    /// Starts with UTF-8 (code page 6) and no converter.
    ETranscoder();
    ~ETranscoder();
    ETranscoder(const ETranscoder&) = delete;
    ETranscoder& operator=(const ETranscoder&) = delete;

    /// Converts from \a encoding (a convi code page) from now on. UTF-8 needs no converter.
    void setEncoding(codepage_t encoding);
    /// The first \a length bytes of \a text, converted from the chosen code page.
    /// \note \a text must end with NUL: for UTF-8, and for text that the code page cannot convert
    /// (which is then taken as UTF-8), \a length is ignored and the text is read up to its NUL. A
    /// NUL inside the first \a length bytes also ends the result.
    QString doTranscode(const char* text, unsigned int length) const;

private:
    convi* m_converter = nullptr;           ///< null while the code page is UTF-8
    codepage_t m_encoding = CP_UTF8;
    mutable pthread_mutex_t m_mutex = PTHREAD_MUTEX_INITIALIZER;
};
