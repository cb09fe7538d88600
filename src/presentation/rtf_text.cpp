#include "presentation/rtf_text.h"

#include "presentation/rtf_reader.h"

namespace tarnwick {

std::string RtfToPlainText(std::string_view rtf) { return ReadRtf(rtf).PlainText(); }

}  // namespace tarnwick
