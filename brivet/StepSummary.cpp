#include "StepSummary.h"

#include "StepReader.h"

StepSummary StepSummary::Read(ByteSource& source) {
  return StepReader(source).Read();
}
