#include "KnownSensors.h"
