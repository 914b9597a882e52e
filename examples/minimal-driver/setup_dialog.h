// The driver's input-setup dialog (Windows).
#pragma once

/// Opens the setup dialog over a camera without properties and cancels it at
/// once, as a user would; true when the library read the camera's settings on
/// opening and wrote them back on Cancel.
bool RunSetupDialog();
