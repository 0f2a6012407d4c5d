#include "Vellacore/Scene/DNode.h"

namespace Vellacore {

DNode::DNode() = default;

DNode::~DNode() = default;

} // namespace Vellacore
