#include "platform/desktop_appearance.h"
