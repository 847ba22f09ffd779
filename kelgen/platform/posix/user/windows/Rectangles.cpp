// Rectangles.cpp: arithmetic on rectangles.
#include <kelgen/platform/posix/user/api/WindowPositions.h>

#include <algorithm>

BOOL SetRect(RECT* rectangle, int left, int top, int right, int bottom)
{
    if (!rectangle)
        return FALSE;
    *rectangle = {left, top, right, bottom};
    return TRUE;
}

BOOL SetRectEmpty(RECT* rectangle)
{
    return SetRect(rectangle, 0, 0, 0, 0);
}

BOOL CopyRect(RECT* to, const RECT* from)
{
    if (!to || !from)
        return FALSE;
    *to = *from;
    return TRUE;
}

BOOL InflateRect(RECT* rectangle, int x, int y)
{
    return rectangle ? SetRect(rectangle, rectangle->left - x, rectangle->top - y, rectangle->right + x, rectangle->bottom + y) : FALSE;
}

BOOL OffsetRect(RECT* rectangle, int x, int y)
{
    return rectangle ? SetRect(rectangle, rectangle->left + x, rectangle->top + y, rectangle->right + x, rectangle->bottom + y) : FALSE;
}

BOOL IsRectEmpty(const RECT* rectangle)
{
    return !rectangle || rectangle->left >= rectangle->right || rectangle->top >= rectangle->bottom;
}

BOOL EqualRect(const RECT* left, const RECT* right)
{
    return left && right && left->left == right->left && left->top == right->top && left->right == right->right &&
           left->bottom == right->bottom;
}

BOOL PtInRect(const RECT* rectangle, POINT point)
{
    return rectangle && point.x >= rectangle->left && point.x < rectangle->right && point.y >= rectangle->top &&
           point.y < rectangle->bottom;
}

BOOL IntersectRect(RECT* result, const RECT* left, const RECT* right)
{
    if (!result || !left || !right)
        return FALSE;
    const RECT shared{std::max(left->left, right->left), std::max(left->top, right->top), std::min(left->right, right->right),
                      std::min(left->bottom, right->bottom)};
    if (IsRectEmpty(left) || IsRectEmpty(right) || IsRectEmpty(&shared)) {
        SetRectEmpty(result);
        return FALSE;
    }
    *result = shared;
    return TRUE;
}

BOOL UnionRect(RECT* result, const RECT* left, const RECT* right)
{
    if (!result || !left || !right)
        return FALSE;
    if (IsRectEmpty(left) && IsRectEmpty(right)) {
        SetRectEmpty(result);
        return FALSE;
    }
    if (IsRectEmpty(left))
        *result = *right;
    else if (IsRectEmpty(right))
        *result = *left;
    else
        *result = {std::min(left->left, right->left), std::min(left->top, right->top), std::max(left->right, right->right),
                   std::max(left->bottom, right->bottom)};
    return TRUE;
}

BOOL SubtractRect(RECT* result, const RECT* left, const RECT* right)
{
    if (!result || !left || !right)
        return FALSE;
    RECT rest = *left;
    RECT shared;
    if (IntersectRect(&shared, left, right) && EqualRect(&shared, left))
        rest = RECT{};
    if (IsRectEmpty(&rest)) {
        SetRectEmpty(result);
        return FALSE;
    }
    if (!IsRectEmpty(&shared)) {
        // What is left is a rectangle only when a whole side goes.
        if (shared.top == rest.top && shared.bottom == rest.bottom) {
            if (shared.left == rest.left)
                rest.left = shared.right;
            else if (shared.right == rest.right)
                rest.right = shared.left;
        } else if (shared.left == rest.left && shared.right == rest.right) {
            if (shared.top == rest.top)
                rest.top = shared.bottom;
            else if (shared.bottom == rest.bottom)
                rest.bottom = shared.top;
        }
    }
    *result = rest;
    return TRUE;
}
