#pragma once
// What the anchor point tool may reach of an open Plot Layout dialog.
namespace tarnwick {

class PlotLayoutFormLink {
 public:
  virtual double AnchorX() const = 0;
  virtual double AnchorY() const = 0;
  virtual void SetAnchorX(double x) = 0;
  virtual void SetAnchorY(double y) = 0;
  virtual bool InitializingForm() const = 0;
  virtual void SetInitializingForm(bool initializing) = 0;
  // Writes AnchorX and AnchorY into the dialog's coordinate boxes.
  virtual void WriteAnchorCoordinates() = 0;
  // The dialog's toggle button: pressed (tool on) and released (tool off).
  virtual void imgButtonUp_Click() = 0;
  virtual void imgButtonDown_Click() = 0;

 protected:
  ~PlotLayoutFormLink() = default;
};

}  // namespace tarnwick
