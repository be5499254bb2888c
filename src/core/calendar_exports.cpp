// The calendar exports: day numbers, the stopwatch and file dates.
#include "core/calendar.h"
#include "tqcomm2006.h"

namespace {

void Store(int32_t* out, int value) {
  if (out != nullptr) *out = value;
}

}  // namespace

extern "C" {

TQ_API int TQ_CALL vcGetDateStr(int day, char* out) { return tq::FormatDayNumber(day, out); }

TQ_API int TQ_CALL vcGetDaysFrom1900_1_1(int year, int month, int day) { return tq::DaysFrom1900(year, month, day); }

TQ_API double TQ_CALL vcMyGetTime(void) { return tq::SystemTimeValue(); }

TQ_API int64_t TQ_CALL vcTimePassed(double earlier) { return tq::MillisecondsSince(earlier); }

TQ_API void TQ_CALL vcGetFileTime(const char* path, int32_t* year, int32_t* month, int32_t* day) {
  tq::FileDate d = tq::FileWriteDateUtc(path);
  Store(year, d.year);
  Store(month, d.month);
  Store(day, d.day);
}

TQ_API void TQ_CALL vcGetFileTimeEx(const char* path, int32_t* year, int32_t* month, int32_t* day, int32_t* hour,
                                    int32_t* minute, int /*ignored*/) {
  tq::FileDate d = tq::FileCreationDateLocal(path);
  Store(year, d.year);
  Store(month, d.month);
  Store(day, d.day);
  Store(hour, d.hour);
  Store(minute, d.minute);
}

}  // extern "C"
