#include "platform/hot_keys.h"
