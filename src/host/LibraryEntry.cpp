// The shared library is made of the folders' own libraries; this is the one file it brings itself.
#include "engine/ZOVKPopup.h"
#include "host/ZOVKPopupHost.h"
