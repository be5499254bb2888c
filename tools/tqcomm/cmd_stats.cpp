// tqcomm stats: what a learner wants to know about a book's words at a
// glance. How many come due in the coming days, how the past month's
// answers went, which words keep failing, how many are known; with --png
// the coming and past days as bar charts.
#include <cstdio>
#include <string>

#include "commands.h"
#include "learning_options.h"
#include "stats_chart.h"
#include "stats_report.h"

namespace tqcomm {
namespace {

struct Options : LearningOptions {
  int days = 30;
  std::string png;
};

const char kUsage[] =
    "usage: tqcomm stats [--book BOOK.idx] [--history H.his] [--date YYYY-MM-DD]\n"
    "                    [--curve 0,1,2,4,7,15,30] [--days N] [--png OUT.png]\n";

int Usage() {
  std::fputs(kUsage, stderr);
  return 2;
}

int Help() {
  std::printf(
      "%s\nA book's words at a glance, read from its history file:\n"
      "  - today's words due by the forgetting curve (overdue, falling due today,\n"
      "    and the hard words the learning offers every day), then how many fall\n"
      "    due on each of the next N days if nothing is learnt before;\n"
      "  - words answered on each of the past %d days, as far as the records tell\n"
      "    (first learning, the reviews of the present pass, last learning), and\n"
      "    the share of answers right for words in their first week and for older\n"
      "    words;\n"
      "  - leeches: words answered wrong or unsure %d times or more, worst first;\n"
      "  - the words by state: not met, being learnt, known, mastered, relapsed.\n"
      "Nothing is written to the book or its history.\n\n%s"
      "  --days N            days of the forecast, 1 to 365 (default 30)\n"
      "  --png OUT.png       also draw the coming and past days as bar charts\n"
      "\nExit status: 0 done, 1 the history cannot be read or the picture not\n"
      "written, 2 bad usage.\n",
      kUsage, kPastDays, kLeechWrong, kLearningOptionsHelp);
  return 0;
}

bool ParseOptions(const Args& in, Options* o) {
  Args args = in;
  if (!TakeLearningOptions(&args, o)) return false;
  if (!TakeNumberOption(&args, "--days", 1, 365, &o->days)) return false;
  TakeOption(&args, "--png", &o->png);
  return args.empty();
}

}  // namespace

int StatsCommand(const Args& args) {
  if (WantsHelp(args)) return Help();
  Options o;
  if (!ParseOptions(args, &o)) return Usage();
  if (int r = PrepareSampleBook(o); r != 0) return r;

  StatsInput in;
  in.history = o.history;
  in.day = o.day;
  std::copy(o.curve, o.curve + 7, in.curve);
  in.days = o.days;
  in.book_path = o.idx;
  in.book = OpenBook(o.idx, &in.book_words);

  StatsReport report;
  std::string error;
  int status = 0;
  if (!GatherStats(in, &report, &error)) {
    std::fprintf(stderr, "tqcomm: %s\n", error.c_str());
    status = 1;
  } else {
    std::fputs(FormatStats(in, report).c_str(), stdout);
    if (!o.png.empty()) {
      if (DrawStatsPng(in, report, o.png, &error)) {
        std::printf("picture: %s\n", o.png.c_str());
      } else {
        std::fprintf(stderr, "tqcomm: %s\n", error.c_str());
        status = 1;
      }
    }
  }
  CloseBook(in.book);
  return status;
}

}  // namespace tqcomm
