// The shared library is made of the folders' own libraries; this is the one file it brings itself.
#include "zovkpopup/Host.h"
#include "zovkpopup/ZOVKPopup.h"
