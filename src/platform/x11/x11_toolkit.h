#pragma once

// Whether the toolkit's own connection to the X server is broken, as after the server's end. False where it
// has none.
bool isToolkitDisconnected();
