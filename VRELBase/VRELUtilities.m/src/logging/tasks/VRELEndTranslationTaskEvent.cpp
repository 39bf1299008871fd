#include "VRELEndTranslationTaskEvent.h"

#include "VRELEventBus.h"

namespace {

std::tm LocalTime() {
  std::time_t const now = std::time(nullptr);
  std::tm const* const time = std::localtime(&now);
  return time == nullptr ? std::tm{} : *time;
}

}  // namespace

VRELEndTranslationTaskEvent::VRELEndTranslationTaskEvent(VRINResult const& result, bool isPartInAssembly,
                                                         int failedEntitiesCount)
    : VRELEndTaskEvent(result, "Translation", "Translation", VREL_LEVEL_INFO, false),
      finishTime(LocalTime()),
      failedEntities(failedEntitiesCount),
      partInAssembly(isPartInAssembly) {}

void VRELEndTranslationTaskEvent::GetFormattedDescription(VRELOutputStream* stream) {
  // asctime ends its text with a line feed, so that an empty line follows.
  std::string text = std::string("Finish Time : ") + std::asctime(&finishTime) + '\n' + ResultText();
  if (!getTaskResult().IsCompleteSuccess() && failedEntities != -1) {
    text += "Failed Entities : " + std::to_string(failedEntities) + '\n';
  }
  text += Rule;
  if (partInAssembly) text += std::string("End Translation of Part Definition Document In Assembly\n") + Rule;
  WriteText(stream, text);
}

void VRELEndTranslationTaskEvent::Fire(VRINResult const& result, bool isPartInAssembly) {
  VRELEndTranslationTaskEvent event(result, isPartInAssembly, -1);
  VRELEventBus::GetEventBus()->Send(event);
}

void VRELEndTranslationTaskEvent::Fire(long result, bool isPartInAssembly) {
  Fire(VRINResult(result), isPartInAssembly);
}
