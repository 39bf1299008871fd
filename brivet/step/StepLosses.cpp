#include "StepLosses.h"

#include <algorithm>
#include <iterator>
#include <utility>

void StepLosses::Add(Loss loss) {
  ++count;
  Append(std::move(loss));
}

void StepLosses::AddIncomplete(long line, std::string const& reason) {
  incomplete = true;
  Append({line, line, {}, reason});
}

void StepLosses::Append(Loss loss) {
  if (losses.size() < kLimit) {
    losses.push_back(std::move(loss));
    return;
  }
  Loss& last = losses.back();
  last.lastLine = std::max(last.lastLine, loss.lastLine);
  std::move(loss.instances.begin(), loss.instances.end(), std::back_inserter(last.instances));
}
