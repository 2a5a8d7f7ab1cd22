#include "base/notice.h"
