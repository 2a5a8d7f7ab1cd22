#include "platform/x11/x11_key_codes.h"

#include <iterator>
#include <utility>

namespace {

struct Row {
    int keyCode;
    X11Key key;
};

// Letters, digits and signs are their own keysyms; the others lie from 0xff00 on.
constexpr Row kRows[] = {
    {0, {'a', 38}},       {11, {'b', 56}},      {8, {'c', 54}},       {2, {'d', 40}},
    {14, {'e', 26}},      {3, {'f', 41}},       {5, {'g', 42}},       {4, {'h', 43}},
    {34, {'i', 31}},      {38, {'j', 44}},      {40, {'k', 45}},      {37, {'l', 46}},
    {46, {'m', 58}},      {45, {'n', 57}},      {31, {'o', 32}},      {35, {'p', 33}},
    {12, {'q', 24}},      {15, {'r', 27}},      {1, {'s', 39}},       {17, {'t', 28}},
    {32, {'u', 30}},      {9, {'v', 55}},       {13, {'w', 25}},      {7, {'x', 53}},
    {16, {'y', 29}},      {6, {'z', 52}},       {29, {'0', 19}},      {18, {'1', 10}},
    {19, {'2', 11}},      {20, {'3', 12}},      {21, {'4', 13}},      {23, {'5', 14}},
    {22, {'6', 15}},      {26, {'7', 16}},      {28, {'8', 17}},      {25, {'9', 18}},
    {49, {' ', 65}},      {36, {0xff0d, 36}},   {48, {0xff09, 23}},   {53, {0xff1b, 9}},
    {51, {0xff08, 22}},   {123, {0xff51, 113}}, {124, {0xff53, 114}}, {126, {0xff52, 111}},
    {125, {0xff54, 116}}, {27, {'-', 20}},      {24, {'=', 21}},      {33, {'[', 34}},
    {30, {']', 35}},      {41, {';', 47}},      {39, {'\'', 48}},     {43, {',', 59}},
    {47, {'.', 60}},      {44, {'/', 61}},      {42, {'\\', 51}},     {50, {'`', 49}},
    {122, {0xffbe, 67}},  {120, {0xffbf, 68}},  {99, {0xffc0, 69}},   {118, {0xffc1, 70}},
    {96, {0xffc2, 71}},   {97, {0xffc3, 72}},   {98, {0xffc4, 73}},   {100, {0xffc5, 74}},
    {101, {0xffc6, 75}},  {109, {0xffc7, 76}},  {103, {0xffc8, 95}},  {111, {0xffc9, 96}},
    {105, {0xff61, 107}}, // Print
};

// Keys that write the same as one of the rows.
constexpr std::pair<quint32, int> kAliases[] = {
    {0xff8d, 36},                                                              // Enter of the number pad
    {0xfe20, 48},                                                              // Tab with Shift
    {0xffff, 117},                                                             // Delete
    {0xff9f, 117}, {0xff96, 123}, {0xff98, 124}, {0xff97, 126}, {0xff99, 125}, // arrows of the number pad
};

} // namespace

std::optional<int> programKeyCode(quint32 keysym)
{
    for (const Row &row : kRows) {
        if (row.key.keysym == keysym)
            return row.keyCode;
    }
    for (const auto &[alias, keyCode] : kAliases) {
        if (alias == keysym)
            return keyCode;
    }
    return std::nullopt;
}

std::optional<X11Key> x11Key(int keyCode)
{
    for (const Row &row : kRows) {
        if (row.keyCode == keyCode)
            return row.key;
    }
    return std::nullopt;
}
