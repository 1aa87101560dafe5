// funzioni_trigonometriche_e_vettoriali: angles, sines and cosines, distances
// and directions between points.
#include "families/families.h"

const Family funzioni_trigonometriche_e_vettoriali{
    "funzioni_trigonometriche_e_vettoriali", OTTIENI_GUARD, OTTIENI_GUARD, {}};
