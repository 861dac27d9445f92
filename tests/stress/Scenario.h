// SPDX-License-Identifier: MIT
#pragma once

#include "stress/Stage.h"

#include <QVector>

#include <memory>

/// One way of mistreating the module. round() is called again and again until the time is up; each call leaves nothing
/// behind that the next one does not need.
class Scenario
{
public:
    virtual ~Scenario() = default;
    /// Called once, before the first round.
    virtual void prepare(Stage &) {}
    virtual void round(Stage &stage) = 0;
    /// Called before the memory is measured: puts away what differs from round to round.
    virtual void rest() {}
};

struct SScenarioEntry
{
    const char *name;
    std::unique_ptr<Scenario> (*create)();
    int residentGrowth;          ///< KiB that the resident memory may grow by after the warm-up
    void (*prepare)() = nullptr; ///< called before there is an application
    double warmUp = 0.0;         ///< seconds that it lasts at most; 0 for half of the time
};

/// All scenarios.
const QVector<SScenarioEntry> &scenarios();

/// Registers a scenario: a line at the end of its file.
class ScenarioRegistration
{
public:
    explicit ScenarioRegistration(const SScenarioEntry &entry);
};

/// For a scenario that keeps nothing between rounds.
#define STRESS_SCENARIO(Class, name, residentGrowth) \
  static const ScenarioRegistration registered##Class( \
      {name, []() -> std::unique_ptr<Scenario> { return std::make_unique<Class>(); }, residentGrowth});
