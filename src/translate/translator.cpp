#include "translate/translator.h"
