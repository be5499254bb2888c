// The speech synthesiser as the sound centre has always used it: five
// operations on numbered sessions. Behind them stands espeak-ng, spoken to
// in UTF-8 and heard through a callback, its samples resampled to the
// format the caller asks for and written as a wave file.
//
// espeak-ng is one engine per process, neither thread-safe nor able to be
// started twice. It is started once, by the first vcInitTts, and never
// stopped; every call into it runs under one lock; a session is only a
// number with a voice and a rate, which vcUnInitTts forgets. Other code of
// the process that wants espeak-ng (the tool's pronunciation builder) takes
// it as it finds it: whoever comes second sees, by espeak_Info, that it is
// up, and does not start it again.
#pragma once

#include <cstdint>
#include <string>

namespace tq::sound {

// Voices used when the session names none, or one espeak-ng doesn't know.
constexpr const char* kEnglishVoice = "en";
constexpr const char* kChineseVoice = "cmn-latn-pinyin";

// Starts a session: a positive number, or 0 when espeak-ng or its data is
// missing. The environment variable TQCOMM_ESPEAK_DATA, read at the first
// call, names espeak-ng's data folder (the one holding "phondata", or its
// parent); a name that is no folder leaves speech off.
int vcInitTts();
// Forgets the session. espeak-ng stays up for the next one.
void vcUnInitTts(int session);
// The voice of the session's later speech (null: the language's default).
// 1, or -1 for no such session.
int vcTtsSetCharacter(int session, const char16_t* voice);
// The signed speaking rate; see WordsPerMinute. 1, or -1.
int vcTtsSetRate(int session, int rate);
// Speaks GBK text into a new wave file of samplesPerSecond, channels (1 or
// 2) and bits (8 or 16), with the session's voice, else English or (with
// isChinese 1) Mandarin. 1, or -1 on any failure.
int vcTtsSpeakToFileAnsi(int session, const char* text, const char* wavePath, int samplesPerSecond, int channels,
                         int bits, int isChinese);

// The rate rule: rate r (cut to -10..10) speaks at 175 x 3^(r/10) words a
// minute, held within espeak-ng's 80 to 450. 0 is espeak-ng's normal 175,
// -2 (the rate of Chinese) 140, 10 three times as fast.
int WordsPerMinute(int rate);

// Voice names travel as wide text, as the speech library takes them.
std::u16string WideFromGbk(const char* gbk);
std::string Utf8FromWide(const std::u16string& wide);

// Tests only: how many times this process has started espeak-ng (0 or 1).
int EngineStartsForTesting();

}  // namespace tq::sound
