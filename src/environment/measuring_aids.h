// The rulers and the protractor that a program switches on to measure its
// drawing: drawn by main_code_ctrl above everything else of a frame.
#pragma once

// A cross through the mouse at (`mx`, `my`) across a window of `width` x
// `height`, with the mouse's coordinates in boxes halfway along its arms.
void draw_rulers(double width, double height, double mx, double my);

// The angle from the centre (`cx`, `cy`) towards the mouse at (`mx`, `my`):
// a fan swept from 0 degrees, a cross on the centre, the radius line, and
// the angle in a box by the mouse.
void draw_protractor(double cx, double cy, double mx, double my);
