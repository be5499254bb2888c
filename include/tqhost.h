/*
 * The Linux host of tqcomm2006.
 *
 * Where the library would talk to windows, list boxes and progress bars of
 * the front end, on Linux it talks to host objects that live in the process.
 * A front end (or a test) makes them here, passes their handles to the
 * library's functions wherever a window, list box or progress bar is asked
 * for, and reads back what they would show. Message boxes go to a handler
 * that the front end sets.
 *
 * Windows, device contexts (drawing surfaces) and GDI objects (pens, fonts,
 * regions) are positive 32-bit integer handles from one counter, so no
 * number is two things at once; 0 is none.
 *
 * Drawing. A device context is a surface of real pixels (Cairo) with a real
 * font engine (Pango). The default font is WenQuanYi Micro Hei (Debian's
 * fonts-wqy-microhei) with a cell 16 pixels high, in black, on an opaque
 * white background; a face the machine has is drawn in that face, any other
 * in the default. Widths measured are the pixel widths drawn. The face
 * "pron" draws the pronunciation notation of the dictionaries, ASCII
 * stand-ins for phonetic symbols, in DejaVu Sans (fonts-dejavu-core):
 *
 *     I  U  E  Q  A  O  R  C  a  :  '  ,  S  Z  T  D  N
 *     ɪ  ʊ  ə  ʌ  æ  ɔ  ɜ  ɒ  ɑ  ː  ˈ  ˌ  ʃ  ʒ  θ  ð  ŋ
 *
 * (U+026A U+028A U+0259 U+028C U+00E6 U+0254 U+025C U+0252 U+0251 U+02D0
 * U+02C8 U+02CC U+0283 U+0292 U+03B8 U+00F0 U+014B); every other byte is
 * itself, so "['Ap(E)l]" shows as [ˈæp(ə)l].
 *
 * Folders. The Windows folder is $TQCOMM_WINDOWS, else
 * $XDG_DATA_HOME/tqcomm/windows (else ~/.local/share/tqcomm/windows); the
 * system folder is its "system32". The desktop is $XDG_DESKTOP_DIR, else
 * ~/Desktop; the programs folder and the start menu are
 * $XDG_DATA_HOME/applications (else ~/.local/share/applications). Each is
 * made when first asked for.
 *
 * Drives. C: is the one file system: "c:\tmp\x" is /tmp/x. CD drives (the
 * drive type 5) are the optical file systems mounted on the machine (iso9660,
 * udf), lettered from D in mount order, and those declared with
 * tqHost_SetCdDrive; a path on one ("e:\sndlib\x.dat") opens below its
 * folder. Any other letter is dropped as C: is.
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

/* ---- Drawing surfaces ---- */

/* A white surface (every pixel 0xFFFFFF) with the default font and black
 * text; a positive handle, 0 on failure (sides from 1 to 16384). */
TQ_API int tqHost_CreateDC(int width, int height);
TQ_API void tqHost_DeleteDC(int dc);
/* The surface of a window's client area, the same handle at every call; 0
 * for no such window. It keeps what is selected into it, and goes with the
 * window. */
TQ_API int tqHost_GetWindowDC(int window);
/* The pixel as a COLORREF (0x00BBGGRR); 0xFFFFFFFF (CLR_INVALID) outside
 * the surface. */
TQ_API unsigned int tqHost_GetPixel(int dc, int x, int y);
/* Fills [left, right) x [top, bottom) with the colour (not journalled). */
TQ_API void tqHost_FillRect(int dc, int left, int top, int right, int bottom, unsigned int colour);
/* Writes the surface as a PNG file; 1, or -1. */
TQ_API int tqHost_SavePng(int dc, const char* path);
/* The journal of what the library drew on the surface, one line per
 * operation ended by "\n", integers in decimal, colours as the COLORREF in
 * six upper-case hex digits, text as the GBK bytes given:
 *     TextOut X Y TEXT
 *     MoveTo X Y
 *     LineTo X Y
 *     Rectangle L T R B
 *     Pen STYLE WIDTH COLOUR       (a pen selected into the surface)
 *     Font FACE HEIGHT WEIGHT CHARSET   (a font selected)
 *     BkMode MODE
 * The result is the journal's whole length (-1 for no such surface); at most
 * size - 1 bytes and a NUL go to out. */
TQ_API int tqHost_GetDrawLog(int dc, char* out, int size);
TQ_API void tqHost_ClearDrawLog(int dc);

/* ---- Windows: position, shape, procedures and messages ---- */

/* The screen position of the client area's top-left corner (default 0, 0),
 * for conversions between screen and client coordinates. */
TQ_API void tqHost_SetWindowOrigin(int window, int x, int y);
/* 1 when the client point is inside the window's region (the whole client
 * rectangle while none is set), 0 when not, -1 for no such window. */
TQ_API int tqHost_InRegion(int window, int x, int y);
/* A rectangular region [left, right) x [top, bottom), as CreateRectRgn makes
 * one, for the calls that take a region handle; freed with
 * tqHost_DeleteObject. */
TQ_API int tqHost_CreateRectRgn(int left, int top, int right, int bottom);
/* Deletes a region, pen or font; 1, or 0 for no such object. */
TQ_API int tqHost_DeleteObject(int object);

/* A window procedure, as Windows calls one. */
typedef intptr_t (TQ_CALL *TqWindowProc)(int window, unsigned int message, uintptr_t wParam, intptr_t lParam);
/* Installs a procedure and returns the previous one (the subclassing of
 * SetWindowLongA with index -4); null, with nothing changed, for no such
 * window or a null procedure. A new window's own procedure keeps its text,
 * list box and progress bar (WM_SETTEXT, WM_GETTEXT, LB_..., PBM_...) and
 * answers 0 to anything else; pass it on with tqHost_CallWindowProc. */
TQ_API TqWindowProc tqHost_SetWindowProc(int window, TqWindowProc proc);
/* Calls a procedure, as CallWindowProcA; 0 for a null one. */
TQ_API intptr_t tqHost_CallWindowProc(TqWindowProc proc, int window, unsigned int message, uintptr_t wParam,
                                      intptr_t lParam);
/* Calls the window's current procedure; 0 for no such window. Every message
 * the library itself sends a window goes the same way, so a procedure that a
 * front end installs sees them all. */
TQ_API intptr_t tqHost_SendMessage(int window, unsigned int message, uintptr_t wParam, intptr_t lParam);
/* Queues the message for DoEvents on the thread that made the window, which
 * dispatches at most one per call; 1, or 0 for no such window. */
TQ_API int tqHost_PostMessage(int window, unsigned int message, uintptr_t wParam, intptr_t lParam);

/* ---- Keys, mouse, sound, drives, version ---- */

/* What GetKeyState answers for a virtual key (0 to 255): negative while down. */
TQ_API void tqHost_SetKeyState(int virtualKey, int down);
/* The mouse cursor's screen position. */
TQ_API void tqHost_SetCursorPos(int x, int y);
/* What waveOutGetNumDevs answers; by default (or for a count below 0) the
 * number of ALSA playback devices the machine has. */
TQ_API void tqHost_SetAudioDeviceCount(int count);
/* Where sndPlaySoundA goes: the player gets the path (null: stop) and the
 * flags (1 SND_ASYNC, 2 SND_NODEFAULT) and answers nonzero when it plays.
 * With none set (null) the host plays through the machine's audio with SoX's
 * "play" program, when it has a device. */
TQ_API void tqHost_SetSoundPlayer(int (*play)(const char* path, unsigned int flags));
/* Declares a CD-ROM drive (GetDriveTypeA answers 5) whose root is the folder;
 * a null folder removes the letter, a drive found on the machine included. */
TQ_API void tqHost_SetCdDrive(char letter, const char* folder);
/* What GetVersionExA reports: platform id, major and minor version
 * (default 2, 5, 1: Windows XP). */
TQ_API void tqHost_SetVersion(int platform, int major, int minor);

#ifdef __cplusplus
}
#endif

#endif /* TQHOST_H */
