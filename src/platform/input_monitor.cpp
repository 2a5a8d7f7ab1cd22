#include "platform/input_monitor.h"
