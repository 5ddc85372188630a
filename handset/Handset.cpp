#include "handset/Handset.h"
