// Icons drawn from their resources; not for programs.
#pragma once

class QIcon;

// Empty for a name that no table has. The drawing follows the colours of the user's theme and the screen's
// scale.
QIcon IconOf(const char* name);

// The toolkit makes the icons of title bars anew for each child frame and each of its pictures, and keeps
// scaled copies of all of them for long: some ten kilobytes for every window that was ever shown. From now on
// it uses the same ones again.
void KeepTitleBarIcons();
