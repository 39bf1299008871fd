#include "Gk_Observer.h"

void Gk_Observer::wrongType() const {}
