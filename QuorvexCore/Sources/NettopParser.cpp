#include "NettopParser.h"
