#pragma once

// Whether a program of this display takes over what others have copied when they end.
bool hasX11ClipboardManager();
