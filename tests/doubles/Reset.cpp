#include "Reset.h"

#include "Alerts.h"
#include "Bundle.h"
#include "Fmod.h"
#include "Glpng.h"
#include "Glut.h"
#include "OpenGL.h"

namespace doubles {

void Reset() {
    alerts = {};
    bundle = {};
    fmod = {};
    glpng = {};
    glut = {};
    openGL = {};
    ForgetCoreFoundationObjects();
}

} // namespace doubles
