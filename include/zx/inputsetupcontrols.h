// Input-setup controls: the base and the list, and every control family. A
// driver includes this one header; each family's header stands alone too.
#pragma once
#include "zx/iscontrolbase.h"
#include "zx/iscontrols_choice.h"
#include "zx/iscontrols_command.h"
#include "zx/iscontrols_editexposure.h"
#include "zx/iscontrols_freecombo.h"
#include "zx/iscontrols_numeric.h"
