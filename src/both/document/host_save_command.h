// The identifier of the host's own Save command, sent to its main window as a window command.
#pragma once

constexpr unsigned kHostSaveCommand = 0xE103;
