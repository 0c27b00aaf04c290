#include "PowerService.h"
