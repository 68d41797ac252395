#include <znutil/undo/ZnAction.h>

ZnAction::~ZnAction() {}
