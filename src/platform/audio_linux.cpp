// Sound output: how many devices there are, and playing a wave file.
//
// The machine's devices are its ALSA playback devices (/dev/snd/pcmC*D*p).
// A file is played by the "play" program of SoX, which goes to whatever the
// machine's sound server is; as sndPlaySoundA does, a new sound stops the one
// still playing.
#include <dirent.h>
#include <fcntl.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>

#include <atomic>
#include <cstring>
#include <mutex>
#include <thread>

#include "platform/devices.h"
#include "platform/env.h"

extern char** environ;

namespace tq::host {
namespace {

std::atomic<int> g_device_count{-1};  // below 0: as the machine has
std::atomic<SoundPlayer> g_player{nullptr};
std::mutex g_playing_mutex;
pid_t g_playing = 0;  // the player of the asynchronous sound, 0 for none

int MachineDeviceCount() {
  DIR* dir = opendir("/dev/snd");
  if (dir == nullptr) return 0;
  int count = 0;
  while (dirent* e = readdir(dir)) {
    const char* name = e->d_name;
    size_t n = std::strlen(name);
    if (std::strncmp(name, "pcmC", 4) == 0 && n > 0 && name[n - 1] == 'p') ++count;
  }
  closedir(dir);
  return count;
}

void StopPlaying() {
  std::lock_guard<std::mutex> lock(g_playing_mutex);
  if (g_playing != 0) kill(g_playing, SIGTERM);
}

pid_t Spawn(const std::string& path) {
  const char* argv[] = {"play", "-q", "--", path.c_str(), nullptr};
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_addopen(&actions, 1, "/dev/null", O_WRONLY, 0);
  posix_spawn_file_actions_addopen(&actions, 2, "/dev/null", O_WRONLY, 0);
  pid_t pid = 0;
  int rc = posix_spawnp(&pid, "play", &actions, nullptr, const_cast<char* const*>(argv), environ);
  posix_spawn_file_actions_destroy(&actions);
  return rc == 0 ? pid : 0;
}

}  // namespace

int WaveOutDeviceCount() {
  int count = g_device_count;
  return count >= 0 ? count : MachineDeviceCount();
}

void SetAudioDeviceCount(int count) { g_device_count = count < 0 ? -1 : count; }

void SetSoundPlayer(SoundPlayer player) { g_player = player; }

int PlaySoundFile(const char* path, unsigned flags) {
  if (SoundPlayer player = g_player.load()) return player(path, flags);
  if (WaveOutDeviceCount() == 0) return 0;
  StopPlaying();
  if (path == nullptr) return 1;
  std::string native = env::NativePath(path);
  if (!env::Exists(path)) return 0;  // no default sound to fall back on here
  pid_t pid = Spawn(native);
  if (pid == 0) return 0;
  if ((flags & kSndAsync) == 0) {
    int status = 0;
    waitpid(pid, &status, 0);
    return WIFEXITED(status) && WEXITSTATUS(status) == 0 ? 1 : 0;
  }
  {
    std::lock_guard<std::mutex> lock(g_playing_mutex);
    g_playing = pid;
  }
  std::thread([pid] {
    waitpid(pid, nullptr, 0);
    std::lock_guard<std::mutex> lock(g_playing_mutex);
    if (g_playing == pid) g_playing = 0;
  }).detach();
  return 1;
}

}  // namespace tq::host
