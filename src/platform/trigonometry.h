// Angles in radians, to the last bit the same on every machine.
#pragma once

namespace kv {

double Sine(double angle);
double Cosine(double angle);
double Tangent(double angle);
double ArcTangent(double slope); // -Pi / 2 to Pi / 2

} // namespace kv
