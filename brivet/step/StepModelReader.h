// Product model of a STEP file of AP203, AP214 or AP242.
#pragma once

#include "ProductModel.h"
#include "StepEntityStore.h"
#include "StepShapes.h"

// Fills the model from the stored instances. Damaged and unknown data is skipped, with entries in model.warnings.
void ReadStepModel(StepEntityStore const& store, StepShapes::Settings const& settings, ProductModel& model);
