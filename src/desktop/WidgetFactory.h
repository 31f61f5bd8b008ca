#pragma once

#include "platform/Control.h"

class QWidget;

namespace marlet {

// The widget that shows a control in the twips placement, named by the control's key so that
// tests and views find it. Menus have no widget of their own: nullptr.
QWidget* createWidget(const Control& control, QWidget* parent);

// Whether a widget a hand-made view supplies can show a control of this kind.
bool widgetFits(ControlKind kind, const QWidget* widget);

} // namespace marlet
