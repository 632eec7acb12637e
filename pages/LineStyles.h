// How a line may be drawn, as a list offers it.
#pragma once

class CComboBox;

// Fills the list with a pattern for each line style; the number of the style is kept with its entry.
void ListLineStyles(CComboBox& list);
