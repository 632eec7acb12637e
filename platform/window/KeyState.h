// Which modifier keys are held, as of the message being handled.
#pragma once

// Negative while the key is held. Knows VK_SHIFT, VK_CONTROL and VK_MENU; 0 for all others.
short GetKeyState(int virtualKey);
