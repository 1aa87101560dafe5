// The fonts of the asset package, made from free font files.
//
// The package names its fonts and the program finds them by asset index:
// 0 and 1 a monospaced face, normal and bold, with cells 7 pixels wide and
// lines 15 high, for the code editor; 2 a large title face; 3 and 4 a plain
// face for labels, normal and bold; 5 and 6 a monospaced pair for readers
// with dyslexia, with cells 9 pixels wide. A face whose files are all
// missing takes the default font's face at its size, with a debug line.
#pragma once

// Adds the package's fonts as font assets, each reserving the font table
// slot of its asset index; a face is read when its font is first asked for.
// The font table calls it at its first use.
void register_package_fonts();
