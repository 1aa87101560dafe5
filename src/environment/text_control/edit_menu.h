// The menu that a right click on the editor's code box opens at the
// pointer: cut, copy, paste, and the selection in capitals or in small
// letters. Its five entries fan out downwards and go at the next release
// of the left button.
#pragma once

#include <cstdint>

class ObjInputText;

// Closes an open menu; when `open_new`, opens one for `box` at the pointer
// if `box` lets its text be selected and the pointer is the text beam.
void edit_menu_open(ObjInputText& box, bool open_new);
bool edit_menu_is_open();
// Whether the pointer is over an entry of an open menu: the click is the menu's, not the box's.
bool edit_menu_under_pointer();
// The menu's entries as objects.
void define_edit_menu();
