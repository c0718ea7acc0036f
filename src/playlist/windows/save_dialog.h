#pragma once

#include <windows.h>

#include "base/files/file_system.h"
#include "playlist/save_dialog_state.h"

namespace kelvo {

// Lets the user choose where to save a playlist: a folder in a tree of the device's folders, and a
// name. Template, menu bar, icons and texts are the host's. False when the user closed it, or it
// could not open: a dialog of the library is open already. After true, state->path can be
// written, and no file is there.
bool AskWhereToSave(FileSystem& files, HMODULE host_module, HWND parent,
                    SaveDialogState* state) noexcept;

}  // namespace kelvo
