#pragma once

#include "Oru/TimePoints/Core/Rate.h"

namespace Oru::TimePoints {

/// The rates that video work calls by name. Each is made at its first use and lives as long as the program.
///
/// Threads: all operations may be called from different threads at once.
struct VideoRates {
  /// One event a microsecond.
  static const Rate& Microseconds() {
    static const Rate rate(1000000, 1);
    return rate;
  }
  /// One event a millisecond.
  static const Rate& Milliseconds() {
    static const Rate rate(1000, 1);
    return rate;
  }
  /// 23.976 frames a second, film at NTSC speed.
  static const Rate& Rate2398() {
    static const Rate rate(24000, 1001);
    return rate;
  }
  /// Film.
  static const Rate& Rate24() {
    static const Rate rate(24, 1);
    return rate;
  }
  /// PAL frames.
  static const Rate& Rate25() {
    static const Rate rate(25, 1);
    return rate;
  }
  /// 29.97 frames a second, NTSC frames.
  static const Rate& Rate2997() {
    static const Rate rate(30000, 1001);
    return rate;
  }
  /// The nominal rate of NTSC frames.
  static const Rate& Rate30() {
    static const Rate rate(30, 1);
    return rate;
  }
  /// 47.952 frames a second.
  static const Rate& Rate4795() {
    static const Rate rate(48000, 1001);
    return rate;
  }
  /// 48 frames a second.
  static const Rate& Rate48() {
    static const Rate rate(48, 1);
    return rate;
  }
  /// PAL fields, or frames of a progressive picture.
  static const Rate& Rate50() {
    static const Rate rate(50, 1);
    return rate;
  }
  /// 59.94 frames a second, NTSC fields.
  static const Rate& Rate5994() {
    static const Rate rate(60000, 1001);
    return rate;
  }
  /// The nominal rate of NTSC fields.
  static const Rate& Rate60() {
    static const Rate rate(60, 1);
    return rate;
  }
  /// 75 frames a second.
  static const Rate& Rate75() {
    static const Rate rate(75, 1);
    return rate;
  }
  /// 100 frames a second.
  static const Rate& Rate100() {
    static const Rate rate(100, 1);
    return rate;
  }
  /// 119.88 frames a second.
  static const Rate& Rate11988() {
    static const Rate rate(120000, 1001);
    return rate;
  }
  /// 120 frames a second.
  static const Rate& Rate120() {
    static const Rate rate(120, 1);
    return rate;
  }
  /// 300 frames a second.
  static const Rate& Rate300() {
    static const Rate rate(300, 1);
    return rate;
  }
};

}  // namespace Oru::TimePoints
