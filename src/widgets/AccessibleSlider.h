#pragma once

#include <QAccessibleWidget>

namespace tarvelin {

class ctlSlider;

// What a screen reader learns of a ctlSlider: a slider with the slider's accessible name, its value as the
// window shows it ("0.700" or "70%") and its position as a number it can step.
class AccessibleSlider final : public QAccessibleWidget, public QAccessibleValueInterface {
 public:
  explicit AccessibleSlider(ctlSlider* Slider);

  // Makes every ctlSlider answer through this class; safe to call more than once.
  static void Install();

  void* interface_cast(QAccessible::InterfaceType Type) override;
  QString text(QAccessible::Text Text) const override;

  QVariant currentValue() const override;
  void setCurrentValue(const QVariant& Value) override;
  QVariant maximumValue() const override;
  QVariant minimumValue() const override;
  QVariant minimumStepSize() const override;

 private:
  ctlSlider* slider() const;
};

}  // namespace tarvelin
