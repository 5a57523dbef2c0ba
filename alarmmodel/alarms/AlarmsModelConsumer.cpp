#include "AlarmsModelConsumer.h"

AlarmsModelConsumer::~AlarmsModelConsumer() = default;

void AlarmsModelConsumer::modelDestroyed(const AlarmsModel &) {}
