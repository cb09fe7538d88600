#pragma once
// A check a tool makes before it runs, as a value: what the dialog shows when
// the check fails (a message box, or the modal report window for a long
// list) and the control it marks. The command line runs the same checks and
// prints the same text.
#include <optional>
#include <string>
#include <variant>

#include "platform/host/application.h"
#include "platform/host/map_document.h"
#include "platform/workspace.h"

namespace tarnwick {

struct CheckMessage {
  enum class Display {
    Box,       // a message box with the title and icon
    Report,    // plain text in the modal report window, captioned with the title
    Answered,  // a question the user declined: already shown, nothing to add
  };
  std::string text;   // head, empty line, body
  std::string title;  // "" keeps the host's default title
  platform::host::MessageIcon icon = platform::host::MessageIcon::None;
  std::string control;  // marked yellow and given the focus; "" for none
  Display display = Display::Box;
};

// A value, or the check that refused it.
template <class T>
using Checked = std::variant<T, CheckMessage>;

template <class T>
const CheckMessage* Refusal(const Checked<T>& checked) {
  return std::get_if<CheckMessage>(&checked);
}

// The text for a terminal: the title, when there is one, above the text.
std::string CheckMessageText(const CheckMessage& message);

// Two layers are the same when they share their name and their data source.
bool SameLayer(const platform::FeatureLayer& a, const platform::FeatureLayer& b);

// The layer as the map holds it now, with its present selection: the valid
// layer of the same name over the same data. nullopt when it has been
// removed from the map or its data can no longer be read.
std::optional<platform::FeatureLayer> CurrentMapLayer(platform::host::Map& map, const platform::FeatureLayer& layer);

// The same as a check at OK, naming the control that chose the layer.
Checked<platform::FeatureLayer> CheckLayerStillInMap(platform::host::Map& map, const platform::FeatureLayer& layer,
                                                     const std::string& control);

}  // namespace tarnwick
