#pragma once
// The dialog models measure in twips (15 to a pixel): the screen a window
// opens on, as they take it when they place a form.
#include <QGuiApplication>
#include <QScreen>
#include <QWidget>

#include "presentation/report_dialog.h"

namespace tarnwick::desktop {

inline constexpr long kTwipsPerPixel = 15;
// A modal dialog ends this far below its buttons.
inline constexpr long kBottomMarginTwips = 8 * kTwipsPerPixel;

inline ScreenSize ScreenTwips(const QWidget* widget) {
  const QScreen* screen = widget && widget->screen() ? widget->screen() : QGuiApplication::primaryScreen();
  const QRect area = screen ? screen->availableGeometry() : QRect(0, 0, 1280, 800);
  return {area.width() * kTwipsPerPixel, area.height() * kTwipsPerPixel};
}

}  // namespace tarnwick::desktop
