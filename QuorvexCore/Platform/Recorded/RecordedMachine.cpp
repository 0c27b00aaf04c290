#include "RecordedMachine.h"
