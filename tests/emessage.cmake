# SPDX-License-Identifier: LGPL-2.1-or-later
# SPDX-FileCopyrightText: common_gui developers
# tst_emessage loads the Russian texts from the build's resource tree.
add_dependencies(tst_emessage cg_translations)
