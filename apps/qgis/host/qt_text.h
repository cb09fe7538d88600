#pragma once
// Text between the library (UTF-8 std::string) and Qt (QString).
#include <QString>
#include <string>
#include <string_view>

namespace tarnwick::desktop {

inline QString ToQString(std::string_view text) { return QString::fromUtf8(text.data(), static_cast<int>(text.size())); }
inline std::string ToStdString(const QString& text) { return text.toStdString(); }

}  // namespace tarnwick::desktop
