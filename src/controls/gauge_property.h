// SPDX-License-Identifier: GPL-3.0-or-later
// The properties of the dial gauge.
#pragma once

#include <cmath>
#include <cstdint>
#include <limits>
#include <string>
#include <utility>

#include "controls/property_bag.h"

namespace veltrin {

class bkCProg;

// What follows when a property has got another value.
enum class PropertyEffect {
  Repaint,          // the gauge is drawn anew
  RecheckAndPaint,  // also, its colours are translated anew
  FitAndPaint,      // also, the dial is fitted to the control first
  Look,             // also, it is shown differently though its drawing may be the same
};

// One property, whatever its type. It enters itself into its gauge, so that a gauge's
// properties stand in the bag in the order of their declaration.
class AnyGaugeProperty {
 public:
  AnyGaugeProperty(bkCProg& gauge, const char* name, PropertyEffect effect);
  virtual ~AnyGaugeProperty() = default;
  AnyGaugeProperty(const AnyGaugeProperty&) = delete;
  AnyGaugeProperty& operator=(const AnyGaugeProperty&) = delete;

  // The name in the bag.
  const std::string& name() const { return name_; }
  PropertyEffect effect() const { return effect_; }

  // Takes the value of the bag over, or else the default. Has no other effect.
  virtual void read(const PropertyBag& bag, double scale) = 0;

  // Puts the value into the bag unless it is the default.
  virtual void write(PropertyBag& bag, double scale) const = 0;

 protected:
  const bkCProg& gauge() const { return gauge_; }

  // Draws the gauge as it now is, and marks the property as changed for the container.
  void noteWrite();

 private:
  bkCProg& gauge_;
  std::string name_;
  PropertyEffect effect_;
};

// A property of one type. A value that is there already is not written again: nothing is
// drawn for it, and nobody is told. One that fits the dial fits it each time.
template <class Value>
class GaugeProperty : public AnyGaugeProperty {
 public:
  // The value that a written one becomes, by the limits of the property.
  using Limit = Value (*)(const bkCProg& gauge, Value written);

  GaugeProperty(bkCProg& gauge, const char* name, Value initial,
                PropertyEffect effect = PropertyEffect::Repaint, Limit limit = nullptr)
      : AnyGaugeProperty(gauge, name, effect), initial_(initial), value_(initial), limit_(limit) {}

  const Value& get() const { return value_; }
  operator const Value&() const { return value_; }

  GaugeProperty& operator=(Value written) {
    Value value = limited(std::move(written));
    if (value == value_ && effect() != PropertyEffect::FitAndPaint) return *this;
    value_ = std::move(value);
    noteWrite();
    return *this;
  }

  void read(const PropertyBag& bag, double scale) override { value_ = limited(stored(bag, scale)); }
  void write(PropertyBag& bag, double scale) const override {
    if (value_ != initial_) bag.WriteProperty(name(), toStore(scale));
  }

 protected:
  // What the bag holds of the value at that scale of lengths, and back.
  virtual PropertyBag::Value toStore(double) const { return value_; }
  virtual Value stored(const PropertyBag& bag, double) const {
    return bag.ReadProperty<Value>(name()).value_or(initial_);
  }
  const Value& initial() const { return initial_; }

 private:
  friend class bkCProg;

  Value limited(Value written) const {
    return limit_ == nullptr ? written : limit_(gauge(), std::move(written));
  }

  Value initial_;
  Value value_;
  Limit limit_;
};

// A length in pixels. In the bag it stands multiplied by the scale, so that it survives a
// change of the size of pixels.
template <class Value>
class GaugeLength : public GaugeProperty<Value> {
 public:
  using GaugeProperty<Value>::GaugeProperty;
  using GaugeProperty<Value>::operator=;

 protected:
  PropertyBag::Value toStore(double scale) const override { return this->get() * scale; }
  Value stored(const PropertyBag& bag, double scale) const override {
    const auto value = bag.ReadProperty<double>(this->name());
    return value ? wholePixels(*value / scale) : this->initial();
  }

 private:
  // The nearest whole number, the default when the type cannot hold it.
  Value wholePixels(double number) const {
    const double whole = std::nearbyint(number);
    const bool fits =
        whole >= std::numeric_limits<Value>::min() && whole <= std::numeric_limits<Value>::max();
    return fits ? static_cast<Value>(whole) : this->initial();
  }
};

}  // namespace veltrin
