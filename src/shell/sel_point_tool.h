#pragma once
// clsSelPointTool: the map tool with which the user clicks the point the
// plot grid is forced through. Every point it gets goes at once into the
// open Plot Layout dialog (reached through the extension); its marker shows
// where the button went down. The view (a map tool of the desktop) converts
// screen positions to map coordinates and calls these operations.
#include "shell/commands.h"

namespace tarnwick {

class PlotLayoutFormLink;

// The name of the anchor marker on the map; the plot run removes it.
inline constexpr const char* kAnchorMarkerName = "Delete_Me_Tarnwick";

class clsSelPointTool : public TarnwickCommand {
 public:
  clsSelPointTool() : TarnwickCommand(kSelPointToolCommand) {}

  // The user picked the tool (on the toolbar or through the dialog's button).
  void OnClick() override;
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
  // The open Plot Layout dialog, or null.
  PlotLayoutFormLink* Form() const;
  // Gives the point to the open dialog, if there is one.
  void WriteToDialog(double x, double y);
};

}  // namespace tarnwick
