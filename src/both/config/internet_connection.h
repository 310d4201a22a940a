// Whether the page can be loaded from the network. The developers' file may fix the answer with
// the key "internet_connection" (true or false); without it the platform is asked.
#pragma once

class BrevanConfig;
class PlatformServices;

inline constexpr const char* kInternetConnectionKey = "internet_connection";

// `config` may be null (the plug-in not initialised).
bool IsConnectedToInternet(const BrevanConfig* config, PlatformServices& platform);
