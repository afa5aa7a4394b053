#pragma once

#include <QString>

#include <chrono>
#include <functional>
#include <vector>

namespace lumora {

/// Tells whoever waits for the figures what is being done.
void say(const QString& text);

/// Lets time pass, and everything that is in it be served.
void pass(std::chrono::milliseconds time);

/// Returns as soon as the condition holds: it is looked at after every event, not at intervals.
/// Throws after 20 seconds.
void await(const std::function<bool()>& condition);

/// The value that `percent` of all `values` do not exceed; there must be some.
double percentile(std::vector<double> values, double percent);

double median(const std::vector<double>& values);

} // namespace lumora
