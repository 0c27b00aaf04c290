#include "LinuxMachine.h"
