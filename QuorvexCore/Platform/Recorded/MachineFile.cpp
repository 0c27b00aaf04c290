#include "MachineFile.h"
