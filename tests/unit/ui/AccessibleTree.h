#pragma once

#include <QAccessible>
#include <gtest/gtest.h>

namespace quillmender {

/// Asks every object of the tree for children that it does not have, as a tool does that has
/// counted them a moment ago; none may answer anything but "no such child". Gives the number of
/// objects.
inline int expectBoundedTree(QAccessibleInterface *root) {
    const int children = root->childCount();
    for (const int beyond : {children, children + 1, children + 100})
        EXPECT_FALSE(root->child(beyond)) << root->role() << " child " << beyond;
    int objects = 1;
    for (int i = 0; i < children; ++i) {
        QAccessibleInterface *child = root->child(i);
        EXPECT_TRUE(child) << root->role() << " child " << i;
        if (!child)
            continue;
        EXPECT_EQ(root->indexOfChild(child), i) << root->role();
        objects += expectBoundedTree(child);
    }
    return objects;
}

} // namespace quillmender
