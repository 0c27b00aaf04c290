#include "HelperReplies.h"
