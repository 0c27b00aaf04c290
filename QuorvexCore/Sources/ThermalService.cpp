#include "ThermalService.h"
