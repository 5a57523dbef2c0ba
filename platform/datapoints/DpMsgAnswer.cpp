#include "DpMsgAnswer.h"

DpMsgAnswer::~DpMsgAnswer() = default;
