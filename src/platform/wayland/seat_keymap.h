#pragma once

// The sign that the session's keyboard writes with Shift and the key that writes `sign` alone; 0 when it has
// none. Both as code points.
char32_t shiftedSign(char32_t sign);
