// tqcomm feed and tqcomm startup: the message feed and the start-up entries,
// as the front ends see them.
//
//   tqcomm feed count [--partner 2] [--file PATH]   prints the number of new messages
//   tqcomm feed seen N [--partner 2]                marks messages up to N seen
//   tqcomm startup add NAME COMMAND [--service]
//   tqcomm startup remove NAME [--service]
//   tqcomm startup list NAME... [--service]
//   tqcomm startup check NAME COMMAND
//
// The feed's files lie in the Windows folder of the host ($TQCOMM_WINDOWS,
// else the data folder's "windows"); both commands hold the feed's lock
// while they read or write. The start-up entries are registry values under
// the local machine's Run (or RunServices) key.

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

#include "commands.h"
#include "tqcomm2006.h"

namespace tqcomm {
namespace {

const uint32_t kLocalMachine = 2147483650u;
const char kRunKey[] = "SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Run";
const char kRunServicesKey[] = "SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\RunServices";

const char kFeedHelp[] =
    "usage: tqcomm feed count [--partner 2] [--file PATH]\n"
    "       tqcomm feed seen N [--partner 2]\n"
    "\n"
    "count prints how many messages of the partner's message file are numbered\n"
    "above the last one seen (the first partner's \"velmarkadv.txt\", the second's\n"
    "\"vlkjbadv.txt\", in the Windows folder; --file reads another message file).\n"
    "seen N records N as the last message seen. Both hold the feed's lock, so\n"
    "that a program rewriting the files at the same time is waited for (3 s at\n"
    "most). Exit codes: 0 done, 1 no message file or a write failed, 2 bad usage.\n";

const char kStartupHelp[] =
    "usage: tqcomm startup add NAME COMMAND [--service]\n"
    "       tqcomm startup remove NAME [--service]\n"
    "       tqcomm startup list NAME... [--service]\n"
    "       tqcomm startup check NAME COMMAND\n"
    "\n"
    "The programs started with the session: values of the local machine's\n"
    "\"SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Run\" key (RunServices with\n"
    "--service) in the registry store. list shows the command of each name;\n"
    "check tells whether NAME holds COMMAND, compared without regard to case.\n"
    "Exit codes: 0 done (check: it does), 1 not there or not written, 2 bad usage.\n";

bool WantsHelp(const Args& args) {
  for (const std::string& a : args) {
    if (a == "--help" || a == "-h") return true;
  }
  return false;
}

bool TakeFlag(Args* args, const std::string& name) {
  for (size_t i = 0; i < args->size(); ++i) {
    if ((*args)[i] == name) {
      args->erase(args->begin() + static_cast<std::ptrdiff_t>(i));
      return true;
    }
  }
  return false;
}

// The reason and the usage lines of the help.
int BadUsage(const char* help, const std::string& why) {
  std::string usage(help);
  usage.resize(usage.find("\n\n") + 1);
  std::fprintf(stderr, "tqcomm: %s\n%s", why.c_str(), usage.c_str());
  return 2;
}

// The Windows folder, for messages: the system folder's parent.
std::string WindowsFolder() {
  char system[100] = "";
  if (vcGetSystemDir(system) <= 0 || system[0] == '\0') return "the Windows folder";
  std::string folder = system;
  return folder.substr(0, folder.find_last_of("/\\"));
}

// The feed's lock, for the length of one command.
void StartGuard(bool second) {
  if (second) {
    vcInitKuvAdvForNore();
  } else {
    vcInitKuvAdv();
  }
}

bool IsNumber(const std::string& s) { return !s.empty() && s.size() <= 9 && vcIsAllDigit(s.c_str()) == 1; }

}  // namespace

int FeedCommand(const Args& args_in) {
  if (WantsHelp(args_in)) {
    std::fputs(kFeedHelp, stdout);
    return 0;
  }
  Args args = args_in;
  std::string partner = "1", file;
  TakeOption(&args, "--partner", &partner);
  bool hasFile = TakeOption(&args, "--file", &file);
  if (partner != "1" && partner != "2") return BadUsage(kFeedHelp, "--partner is 1 or 2");
  bool second = partner == "2";
  if (args.empty()) return BadUsage(kFeedHelp, "count or seen?");

  if (args[0] == "count" && args.size() == 1) {
    StartGuard(second);
    std::string path = hasFile ? FromTerminal(file) : "";
    int count = second ? vcIfNewMsgExistForNore(path.c_str()) : vcIfNewMsgExist(path.c_str());
    vcEndKuvAdv();
    if (count == -2) {
      std::string missing = hasFile ? file : WindowsFolder() + "/" + (second ? "vlkjbadv.txt" : "velmarkadv.txt");
      std::fprintf(stderr, "tqcomm: no message file %s\n", ForTerminal(missing).c_str());
      return 1;
    }
    std::printf("%d\n", count);
    return 0;
  }
  if (args[0] == "seen" && args.size() == 2 && !hasFile) {
    if (!IsNumber(args[1])) return BadUsage(kFeedHelp, "seen takes a message number: " + args[1]);
    StartGuard(second);
    int number = std::atoi(args[1].c_str());
    int written = second ? vcSetMaxViewedMsgForNore(number) : vcSetMaxViewedMsg(number);
    vcEndKuvAdv();
    if (written != 1) {
      std::fprintf(stderr, "tqcomm: the last-seen file could not be written\n");
      return 1;
    }
    return 0;
  }
  return BadUsage(kFeedHelp, "unknown feed command");
}

int StartupCommand(const Args& args_in) {
  if (WantsHelp(args_in)) {
    std::fputs(kStartupHelp, stdout);
    return 0;
  }
  Args args = args_in;
  bool service = TakeFlag(&args, "--service");
  if (args.empty()) return BadUsage(kStartupHelp, "add, remove, list or check?");
  const std::string& verb = args[0];
  std::string name = args.size() > 1 ? FromTerminal(args[1]) : "";
  std::string command = args.size() > 2 ? FromTerminal(args[2]) : "";

  if (verb == "add" && args.size() == 3) {
    int r = service ? vcSetStartupRunService(name.c_str(), command.c_str())
                    : vcSetStartupRun(name.c_str(), command.c_str());
    if (r != 0) std::fprintf(stderr, "tqcomm: the entry could not be written\n");
    return r == 0 ? 0 : 1;
  }
  if (verb == "remove" && args.size() == 2) {
    int r = service ? vcRemoveStartupRunService(name.c_str()) : vcRemoveStartupRun(name.c_str());
    if (r != 0) std::fprintf(stderr, "tqcomm: no entry %s\n", args[1].c_str());
    return r == 0 ? 0 : 1;
  }
  if (verb == "check" && args.size() == 3 && !service) {
    bool set = vcIfStartupRun(name.c_str(), command.c_str()) == 1;
    std::printf("%s\n", set ? "yes" : "no");
    return set ? 0 : 1;
  }
  if (verb == "list" && args.size() >= 2) {
    int missing = 0;
    for (size_t i = 1; i < args.size(); ++i) {
      char value[4096];
      int32_t size = sizeof value - 1;
      std::string n = FromTerminal(args[i]);
      if (vcGetKeyValueString(kLocalMachine, service ? kRunServicesKey : kRunKey, n.c_str(), value, &size) == 0) {
        std::printf("%s\t%s\n", args[i].c_str(), ForTerminal(value).c_str());
      } else {
        std::printf("%s\t(not set)\n", args[i].c_str());
        ++missing;
      }
    }
    return missing == 0 ? 0 : 1;
  }
  return BadUsage(kStartupHelp, "unknown startup command, or the wrong number of words");
}

}  // namespace tqcomm
