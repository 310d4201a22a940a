// The batch's choice of files on Windows: the system's open dialog for several PDF files, each
// checked through the host as the file list checks it; the output options stay as they are by
// default (beside each source, "_redacted" added to the name).
#pragma once

#include <windows.h>

#include <optional>

#include "batch/batch_choice.h"

class HostApi;

// The accepted files in the order chosen; nothing when the user cancelled or no file passed.
std::optional<BatchChoice> ChooseBatchFilesWithDialog(HostApi& host, HWND parent);
