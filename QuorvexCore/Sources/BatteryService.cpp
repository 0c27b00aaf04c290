#include "BatteryService.h"
