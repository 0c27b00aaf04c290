#include "HIDSensorService.h"
