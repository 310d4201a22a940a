// What the web engine needs from the process before its first object is made.
#pragma once

// As root the engine's sandbox can't start: it is turned off unless the environment already
// says otherwise. Call before the first web view or page is made; later calls do nothing.
void PrepareWebEngineEnvironment();
