// A planted circle: the check must report it.
#pragma once
#include "probe/a.h"
