// SPDX-License-Identifier: LGPL-2.1-or-later
// SPDX-FileCopyrightText: common_gui developers
#pragma once

#include "common_gui_export.h"

/// Makes SIGINT (Ctrl+C) and SIGTERM end the application's event loop normally, so that exec()
/// returns and the program saves its state and cleans up as on any other exit.
///
/// \code
/// QApplication app(argc, argv);
/// ECtrlC ctrlC;
/// return app.exec();
/// \endcode
/// Making it before the application object works too. Without an application object the signals
/// are ignored. The previous SIGINT handler is kept but not restored.
class COMMON_GUI_EXPORT ECtrlC
{
public:
    ECtrlC();
};
