// Fonts need the toolkit's application object. A windowed program makes its own; for all others drawing makes
// one without windows or a display when the first text is measured or drawn.
#pragma once

// Does nothing when the process has an application object.
void EnsureDrawingToolkit();

// Takes back what EnsureDrawingToolkit made, so that a windowed program can make its own. The next text makes
// a new one if there is none then.
void EndDrawingToolkit();
