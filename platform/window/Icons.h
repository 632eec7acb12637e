// Icons drawn from their resources; not for programs.
#pragma once

class QIcon;

// Empty for a name that no table has. The drawing follows the colours of the user's theme and the screen's
// scale.
QIcon IconOf(const char* name);
