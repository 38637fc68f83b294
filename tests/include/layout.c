/* The places of the slots, as a C compiler lays them out. */
#include "layout.h"
