#include "NetworkCounterAccumulator.h"
