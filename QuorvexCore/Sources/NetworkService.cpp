#include "NetworkService.h"
