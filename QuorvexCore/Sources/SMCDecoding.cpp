#include "SMCDecoding.h"
