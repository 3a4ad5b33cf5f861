#include "common/library.h"
