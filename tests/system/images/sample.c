/* The smallest useful Windows program: it exits with code 0. It exists to
   carry the version resource in sample.rc, which the image tests read and
   stamp. */
#include <windows.h>

void __stdcall SampleEntry(void) { ExitProcess(0); }
