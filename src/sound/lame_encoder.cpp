// The encoder library built in: the six encoder functions on libmp3lame,
// reading the configuration record the conversion fills.
#include <lame.h>

#include <algorithm>
#include <cmath>
#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <map>
#include <mutex>
#include <vector>

#include "core/binary_io.h"
#include "platform/env.h"
#include "sound/mp3_encoder.h"

namespace tq::sound {
namespace {

// Error numbers of the encoder functions.
enum : uint32_t {
  kSuccess = 0,
  kInvalidFormat = 1,
  kInvalidParameters = 2,
  kNoMoreHandles = 3,
  kInvalidHandle = 4,
  kBufferTooSmall = 5,
};

constexpr int kHighQuality = 2;
constexpr int kLowQuality = 7;

// LAME's own reports would reach a terminal the front ends don't have.
void Silent(const char*, va_list) {}

struct Stream {
  lame_global_flags* gfp = nullptr;
  int channels = 0;
  uint32_t capacity = 0;
  bool flushed = false;
};

// The open streams, and the tag frame of the last stream that was flushed
// and closed: the header writer takes only a path, as the encoder's
// callers have always called it.
struct EncoderState {
  std::mutex mutex;
  std::map<uint32_t, Stream> streams;
  uint32_t next = 1;
  std::vector<unsigned char> tag;
};

EncoderState& State() {
  static EncoderState* state = new EncoderState;  // used until exit
  return *state;
}

uint32_t Field(const unsigned char* config, int offset) { return static_cast<uint32_t>(GetI32(config + offset)); }

MPEG_mode ModeOf(uint32_t mode) {
  switch (mode) {
    case 0: return STEREO;
    case 2: return DUAL_CHANNEL;
    case kModeMono: return MONO;
    default: return JOINT_STEREO;
  }
}

void Configure(lame_global_flags* gfp, const unsigned char* c, int channels) {
  lame_set_num_channels(gfp, channels);
  lame_set_in_samplerate(gfp, static_cast<int>(Field(c, kCfgSampleRate)));
  if (Field(c, kCfgOutputRate) != 0) lame_set_out_samplerate(gfp, static_cast<int>(Field(c, kCfgOutputRate)));
  lame_set_mode(gfp, ModeOf(Field(c, kCfgMode)));
  if (Field(c, kCfgEnableVbr) != 0) {
    lame_set_VBR(gfp, vbr_default);
    lame_set_VBR_q(gfp, static_cast<int>(Field(c, kCfgVbrQuality)));
    lame_set_VBR_min_bitrate_kbps(gfp, static_cast<int>(Field(c, kCfgBitrate)));
    if (Field(c, kCfgMaxBitrate) != 0) lame_set_VBR_max_bitrate_kbps(gfp, static_cast<int>(Field(c, kCfgMaxBitrate)));
  } else {
    lame_set_VBR(gfp, vbr_off);
    lame_set_brate(gfp, static_cast<int>(Field(c, kCfgBitrate)));
  }
  const uint32_t preset = Field(c, kCfgPreset);
  if (preset == 2) lame_set_quality(gfp, kHighQuality);
  if (preset == 1) lame_set_quality(gfp, kLowQuality);
  lame_set_emphasis(gfp, static_cast<int>(Field(c, kCfgEmphasis)));
  lame_set_extension(gfp, Field(c, kCfgPrivate) != 0);
  lame_set_error_protection(gfp, Field(c, kCfgCrc) != 0);
  lame_set_copyright(gfp, Field(c, kCfgCopyright) != 0);
  lame_set_original(gfp, Field(c, kCfgOriginal) != 0);
  lame_set_disable_reservoir(gfp, Field(c, kCfgNoReservoir) != 0);
  // The tag frame is always kept in front: decoders need it to trim the
  // encoder's delay and padding, so the sound keeps its length.
  lame_set_bWriteVbrTag(gfp, 1);
  lame_set_write_id3tag_automatic(gfp, 0);
}

uint32_t InitStream(const unsigned char* config, uint32_t* chunkSamples, uint32_t* outCapacity, uint32_t* stream) {
  if (Field(config, kCfgKind) != kConfigKind) return kInvalidFormat;
  lame_global_flags* gfp = lame_init();
  if (gfp == nullptr) return kNoMoreHandles;
  lame_set_errorf(gfp, Silent);
  lame_set_debugf(gfp, Silent);
  lame_set_msgf(gfp, Silent);
  const int channels = Field(config, kCfgMode) == kModeMono ? 1 : 2;
  Configure(gfp, config, channels);
  if (lame_init_params(gfp) < 0) {
    lame_close(gfp);
    return kInvalidParameters;
  }
  Stream s;
  s.gfp = gfp;
  s.channels = channels;
  const uint32_t samples = static_cast<uint32_t>(lame_get_framesize(gfp) * channels);
  // LAME's own bound for the bytes one call may give, for the samples it
  // encodes: a rate below the lowest MPEG rate is raised first, and the
  // chunk then makes that many times more frames. The flush needs the room
  // too: LAME takes a buffer it has filled to the last byte as one of no
  // size, and writes on.
  const double raised =
      std::max(1.0, static_cast<double>(lame_get_out_samplerate(gfp)) / std::max(1, lame_get_in_samplerate(gfp)));
  s.capacity = static_cast<uint32_t>(std::ceil(raised * (samples + samples / 4))) + 7200;
  EncoderState& st = State();
  std::lock_guard<std::mutex> lock(st.mutex);
  *stream = st.next++;
  st.streams[*stream] = s;
  *chunkSamples = samples;
  *outCapacity = s.capacity;
  return kSuccess;
}

// The stream of a number, under the state's lock.
template <class F>
uint32_t WithStream(uint32_t stream, F f) {
  EncoderState& st = State();
  std::lock_guard<std::mutex> lock(st.mutex);
  auto it = st.streams.find(stream);
  return it == st.streams.end() ? kInvalidHandle : f(it->second);
}

uint32_t Encoded(int bytes, uint32_t* outBytes) {
  if (bytes < 0) return bytes == -1 ? kBufferTooSmall : kInvalidParameters;
  *outBytes = static_cast<uint32_t>(bytes);
  return kSuccess;
}

uint32_t EncodeChunk(uint32_t stream, uint32_t samples, const int16_t* pcm, unsigned char* out,
                     uint32_t* outBytes) {
  return WithStream(stream, [&](Stream& s) {
    const int frames = static_cast<int>(samples / static_cast<uint32_t>(s.channels));
    short* in = const_cast<short*>(reinterpret_cast<const short*>(pcm));
    const int cap = static_cast<int>(s.capacity);
    return Encoded(s.channels == 2 ? lame_encode_buffer_interleaved(s.gfp, in, frames, out, cap)
                                   : lame_encode_buffer(s.gfp, in, in, frames, out, cap),
                   outBytes);
  });
}

uint32_t DeinitStream(uint32_t stream, unsigned char* out, uint32_t* outBytes) {
  return WithStream(stream, [&](Stream& s) {
    s.flushed = true;
    return Encoded(lame_encode_flush(s.gfp, out, static_cast<int>(s.capacity)), outBytes);
  });
}

uint32_t CloseStream(uint32_t stream) {
  EncoderState& st = State();
  std::lock_guard<std::mutex> lock(st.mutex);
  auto it = st.streams.find(stream);
  if (it == st.streams.end()) return kInvalidHandle;
  st.tag.clear();
  if (it->second.flushed) {
    unsigned char frame[2880];  // the largest MPEG audio frame
    size_t n = lame_get_lametag_frame(it->second.gfp, frame, sizeof frame);
    if (n <= sizeof frame) st.tag.assign(frame, frame + n);
  }
  lame_close(it->second.gfp);
  st.streams.erase(it);
  return kSuccess;
}

void Version(unsigned char* version) {
  // Major and minor of the interface, then of the encoder; its home page at 8.
  lame_version_t v;
  get_lame_version_numerical(&v);
  version[0] = 1;
  version[1] = 10;
  version[2] = static_cast<unsigned char>(v.major);
  version[3] = static_cast<unsigned char>(v.minor);
  std::strncpy(reinterpret_cast<char*>(version + 8), get_lame_url(), 128);
}

// The tag frame goes over the frame LAME kept free at the start of the file.
uint32_t WriteVbrHeader(const char* mp3Path) {
  std::vector<unsigned char> tag;
  {
    EncoderState& st = State();
    std::lock_guard<std::mutex> lock(st.mutex);
    tag.swap(st.tag);
  }
  if (tag.empty()) return kInvalidHandle;
  std::FILE* f = env::Open(mp3Path, "r+b");
  if (f == nullptr) return kInvalidParameters;
  const bool ok = FileLength(f) >= static_cast<long>(tag.size()) && std::fwrite(tag.data(), 1, tag.size(), f) == tag.size();
  return std::fclose(f) == 0 && ok ? kSuccess : kInvalidParameters;
}

template <class F>
AnyFunction Any(F f) {
  return reinterpret_cast<AnyFunction>(f);
}

class LameLibrary : public EncoderLibrary {
 public:
  AnyFunction Find(const char* name) override {
    static const struct {
      const char* name;
      AnyFunction function;
    } kFunctions[] = {
        {"FrMp3EncInitStream", Any(&InitStream)},   {"FrMp3EncodeChunk", Any(&EncodeChunk)},
        {"FrMp3DeinitStream", Any(&DeinitStream)},  {"FrMp3CloseStream", Any(&CloseStream)},
        {"FrMp3Version", Any(&Version)},            {"FrMp3WriteVBRHeader", Any(&WriteVbrHeader)},
    };
    for (const auto& f : kFunctions) {
      if (std::strcmp(f.name, name) == 0) return f.function;
    }
    return nullptr;
  }
};

}  // namespace

std::unique_ptr<EncoderLibrary> LoadBuiltInEncoder(const char* name) {
  if (name == nullptr || std::strcmp(name, "FrMp3Enc.dll") != 0) return nullptr;
  return std::make_unique<LameLibrary>();
}

}  // namespace tq::sound
