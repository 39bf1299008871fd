#include "StepModelReader.h"

#include "StepAnnotations.h"
#include "StepAssembly.h"
#include "StepModelContext.h"
#include "StepProperties.h"
#include "StepStyles.h"
#include "StepUnits.h"

void ReadStepModel(StepEntityStore const& store, StepShapes::Settings const& settings, ProductModel& model) {
  StepModelContext context(store, model);
  StepUnits units(context);
  StepStyles styles(context);
  StepShapes shapes(context, units, styles, settings);
  StepAssembly structure(context, units, shapes);
  styles.Read();
  structure.Read();
  StepProperties(context, units, structure).Read();
  StepAnnotations(context, units, styles, shapes, structure).Read();
}
