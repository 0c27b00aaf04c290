#include "PrivilegedSMCHelperService.h"
