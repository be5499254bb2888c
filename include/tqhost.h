/*
 * The Linux host of tqcomm2006.
 *
 * Where the library would talk to windows, list boxes and progress bars of
 * the front end, on Linux it talks to host objects that live in the process.
 * A front end (or a test) makes them here, passes their handles to the
 * library's functions wherever a window, list box or progress bar is asked
 * for, and reads back what they would show. Message boxes go to a handler
 * that the front end sets.
 */
#ifndef TQHOST_H
#define TQHOST_H

#include "tqcomm2006.h"

#ifdef __cplusplus
extern "C" {
#endif

/* A new host window (usable as a list box and a progress bar too); a
 * positive handle. */
TQ_API int tqHost_CreateWindow(const char* title, int clientWidth, int clientHeight);
TQ_API void tqHost_DestroyWindow(int window);
/* Copies the window text to out; its length, or -1 for no such window. */
TQ_API int tqHost_GetWindowText(int window, char* out);
/* Number of lines in the list box, or -1 for no such window. */
TQ_API int tqHost_GetListCount(int window);
/* Copies line index of the list box to out; its length, or -1 past the end. */
TQ_API int tqHost_GetListText(int window, int index, char* out);
/* The progress bar's position, or -1 for no such window. */
TQ_API int tqHost_GetProgressPos(int window);
/* The progress bar's range; 1, or 0 for no such window. */
TQ_API int tqHost_GetProgressRange(int window, int* low, int* high);
/* Sets who answers message boxes: the handler gets the text, the title and
 * the box type, and answers the button id (1 OK, 2 Cancel, 6 Yes, 7 No).
 * With no handler (null) a box is written to standard error and answered
 * OK, or No where Yes and No are offered. */
TQ_API void tqHost_SetMessageBoxHandler(int (*handler)(const char* text, const char* title, unsigned int type));

#ifdef __cplusplus
}
#endif

#endif /* TQHOST_H */
