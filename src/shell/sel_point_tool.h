#pragma once
// clsSelPointTool: the map tool with which the user clicks the point the
// plot grid is forced through. Every point it gets goes at once into the
// open Plot Layout dialog (reached through the extension); its marker shows
// where the button went down. The view (a map tool of the desktop) converts
// screen positions to map coordinates and calls these operations.
#include <string_view>

namespace tarnwick::platform::host {
class Application;
class MapDocument;
}  // namespace tarnwick::platform::host

namespace tarnwick {

class clsExtension;

inline constexpr const char* kSelPointToolProgId = "Tarnwick.clsSelPointTool";
// The name of the anchor marker on the map; the plot run removes it.
inline constexpr const char* kAnchorMarkerName = "Delete_Me_Tarnwick";

class clsSelPointTool {
 public:
  // extension may be null (the host found none): the tool is then disabled.
  clsSelPointTool(platform::host::Application& application, platform::host::MapDocument& document,
                  clsExtension* extension);

  // Usable only while the Plot Layout dialog has switched it on.
  bool Enabled() const;
  // The user picked the tool (on the toolbar or through the dialog's button).
  void OnClick();
  // button 1 is the left button; x and y are map coordinates.
  void OnMouseDown(int button, int shift, double x, double y);
  void OnMouseMove(int button, int shift, double x, double y);
  void OnMouseUp(int button, int shift, double x, double y);
  void OnDblClick() {}
  void OnKeyDown(int, int) {}
  void OnKeyUp(int, int) {}
  // Not handled: the host shows its own menu.
  bool OnContextMenu(double, double) { return false; }
  void Refresh() {}
  // The host switched to another tool; always allowed.
  bool Deactivate();

 private:
  // Runs body as the entry point named routine.
  template <class Body>
  void AsEntryPoint(std::string_view routine, Body&& body);
  // Gives the point to the open dialog, if there is one.
  void WriteToDialog(double x, double y);

  platform::host::Application& application_;
  platform::host::MapDocument& document_;
  clsExtension* extension_;
};

}  // namespace tarnwick
