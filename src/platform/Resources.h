#pragma once

// Makes the program's pictures known to the toolkit. Needed once, before the first window: they
// sit in a library, from which the linker takes only what is asked for.
void loadResources();
