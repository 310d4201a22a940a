// Whether the system's network list says the machine reaches the internet.
#pragma once

// Asks the network list manager, in an apartment of its own opened and closed around the
// question; any failure on the way answers false.
bool SystemReachesInternet();
