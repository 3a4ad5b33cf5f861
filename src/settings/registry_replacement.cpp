#include "settings/registry_replacement.h"
