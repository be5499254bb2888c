// The machine's sound output and CD drives, as the library asks for them
// (waveOutGetNumDevs, sndPlaySoundA, GetDriveTypeA).
//
// A front end or a test may say what they are (tqHost_SetAudioDeviceCount,
// tqHost_SetSoundPlayer, tqHost_SetCdDrive); otherwise they are what the
// machine has.
#pragma once

#include <string>

namespace tq::host {

// sndPlaySoundA flags.
enum : unsigned { kSndSync = 0, kSndAsync = 1, kSndNoDefault = 2 };
// GetDriveTypeA answers.
enum : int { kDriveNoRootDir = 1, kDriveFixed = 3, kDriveCdRom = 5 };

// The number of sound output devices: as set, else the machine's ALSA
// playback devices.
int WaveOutDeviceCount();
// Plays a wave file (kSndAsync: returns at once; otherwise when it has
// played); nonzero when it plays. A null path stops the sound that plays. With
// a player set it goes there (never under a host lock); otherwise to the
// machine's audio through the "play" program of SoX, 0 when there is no
// device.
int PlaySoundFile(const char* path, unsigned flags);

// 5 for a CD drive, 3 for C: (the one file system), 1 for any other letter.
int GetDriveTypeA(char letter);
// The folder that is the root of CD drive letter; false when the letter is
// no CD drive. Paths on such a drive ("E:\sndlib\x.dat") open below it.
bool CdDriveFolder(char letter, std::string* folder);

// Host side. A count below 0 goes back to what the machine has.
void SetAudioDeviceCount(int count);
using SoundPlayer = int (*)(const char* path, unsigned flags);
void SetSoundPlayer(SoundPlayer player);
// Declares CD drive letter with its root folder; a null folder takes the
// letter away (a drive the machine has included).
void SetCdDrive(char letter, const char* folder);

}  // namespace tq::host
