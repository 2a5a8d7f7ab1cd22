#include "platform/workspace.h"
