// GDI+ is started by the first that draws with it.
#pragma once

// Never shut down: devices may be used until the process ends, and a library must not shut GDI+ down on
// detach.
void ensureGdiplus();
