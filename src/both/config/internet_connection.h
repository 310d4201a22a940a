// Whether the page can be loaded from the network. The developers' file may fix the answer with
// the key "internet_connection" (true or false); without it the platform is asked.
#pragma once

class Brevan;

inline constexpr const char* kInternetConnectionKey = "internet_connection";

bool IsConnectedToInternet(Brevan& app);
