// Whether the system reports a path to the internet.
#pragma once

// Asks the system's network information. When the system can't tell (no backend, or an unknown
// state), the answer is true: the page's own load then shows what is wrong.
bool SystemReachesInternet();
