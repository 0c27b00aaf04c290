#include "IOReportBridge.h"
