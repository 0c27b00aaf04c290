#include "SMCService.h"
