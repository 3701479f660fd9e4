#include "widgets/AccessibleSlider.h"

#include "widgets/ctlSlider.h"

namespace tarvelin {

namespace {

QAccessibleInterface* SliderFactory(const QString& ClassName, QObject* Object) {
  auto* slider = qobject_cast<ctlSlider*>(Object);
  if (slider != nullptr && ClassName == QLatin1String("tarvelin::ctlSlider")) {
    return new AccessibleSlider(slider);
  }
  return nullptr;
}

}  // namespace

AccessibleSlider::AccessibleSlider(ctlSlider* Slider) : QAccessibleWidget(Slider, QAccessible::Slider) {}

void AccessibleSlider::Install() {
  static const bool installed = [] {
    QAccessible::installFactory(SliderFactory);
    return true;
  }();
  Q_UNUSED(installed);
}

ctlSlider* AccessibleSlider::slider() const {
  return static_cast<ctlSlider*>(widget());
}

void* AccessibleSlider::interface_cast(QAccessible::InterfaceType Type) {
  if (Type == QAccessible::ValueInterface) {
    return static_cast<QAccessibleValueInterface*>(this);
  }
  return QAccessibleWidget::interface_cast(Type);
}

QString AccessibleSlider::text(QAccessible::Text Text) const {
  if (Text == QAccessible::Value) {
    return slider()->ValueText().isEmpty() ? QString::number(slider()->Value()) : slider()->ValueText();
  }
  return QAccessibleWidget::text(Text);
}

QVariant AccessibleSlider::currentValue() const {
  return slider()->Value();
}

// Screen readers set values as the person would drag: the slider reports the move as the person's.
void AccessibleSlider::setCurrentValue(const QVariant& Value) {
  if (!slider()->ReadOnly()) {
    slider()->pMoveByUser(Value.toInt());
  }
}

QVariant AccessibleSlider::maximumValue() const {
  return 100;
}

QVariant AccessibleSlider::minimumValue() const {
  return 0;
}

QVariant AccessibleSlider::minimumStepSize() const {
  return 1;
}

}  // namespace tarvelin
