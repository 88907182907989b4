@import Ozmira;
@import UIKit;

#include "uses.inc"
