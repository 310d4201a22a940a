// The file name a Save As dialog offers: the document's name with a suffix put between its stem
// and its extension.
#pragma once

#include <string>

// Stem, suffix, extension of the last component of `fileName` (after its last "/" or "\"). The
// extension runs from the component's last "." that is not its first character; "." and ".." have
// none; a ":" ends the component, and what follows it is left out.
std::wstring SaveAsName(const std::wstring& fileName, const std::wstring& suffix);
