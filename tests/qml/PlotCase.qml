// SPDX-License-Identifier: MIT
import QtQuick 2.15
import QtQuick.Window 2.15
import QtTest 1.15

/// A test case that finds things as a person sees them, and fails when anything was written to the log meanwhile.
TestCase {
    id: testCase

    /// Milliseconds after which what must happen is given up.
    readonly property int patience: 60000

    when: windowShown

    function initTestCase() {
        tools.catchMessages();
        tools.prepare(parent.Window.window);
    }

    function cleanup() {
        wait(0);
        compare(tools.takeMessages(), [], "the log");
    }

    // Qt's own give up after 5 s, in which a busy machine may not draw a frame.

    function tryVerify(isSo, message) {
        for (let i = 0; i < patience / 50 && !isSo(); ++i)
            wait(50);
        verify(isSo(), message || "");
    }

    function tryCompare(object, property, expected) {
        for (let i = 0; i < patience / 50 && object[property] !== expected; ++i)
            wait(50);
        compare(object[property], expected);
    }

    /// Like verify(), which is slow, for what is checked thousands of times.
    function expect(condition, what) {
        if (!condition)
            fail(what());
    }

    /// The visible descendants of an item for which wanted() is true, in the order of painting but for z.
    function seen(item, wanted) {
        let found = [];
        for (let i = 0; i < item.children.length; ++i) {
            const child = item.children[i];
            if (!child.visible || child.opacity === 0)
                continue;

            if (wanted(child))
                found.push(child);

            found = found.concat(seen(child, wanted));
        }
        return found;
    }

    function isText(item) {
        return item.lineCount !== undefined && item.elide !== undefined && item.text !== "";
    }

    function isRectangle(item) {
        return item.radius !== undefined && item.border !== undefined;
    }

    function textsIn(item) {
        return seen(item, isText);
    }

    function rectanglesIn(item, wanted) {
        return seen(item, (child) => isRectangle(child) && wanted(child));
    }

    /// The text item that reads so; fails without one.
    function textReading(item, text) {
        const found = seen(item, (child) => isText(child) && child.text === text);
        verify(found.length === 1, found.length + " texts read " + text);
        return found[0];
    }

    /// What the window shows, in an item's pixels, however many of the screen one of them is.
    function pictureOf(item) {
        const image = tools.grab(item.Window.window);
        const corner = item.mapToItem(null, 0, 0);
        return { pixel: (x, y) => tools.pixelOf(image, corner.x + x, corner.y + y) };
    }

    /// Where an item lies in another one's coordinates.
    function rectIn(item, ancestor) {
        return item.mapToItem(ancestor, Qt.rect(0, 0, item.width, item.height));
    }

    /// Where the letters of a text lie in another item's coordinates.
    function lettersIn(text, ancestor) {
        let x = 0;
        if (text.effectiveHorizontalAlignment === Text.AlignRight)
            x = text.width - text.paintedWidth;
        else if (text.effectiveHorizontalAlignment === Text.AlignHCenter)
            x = (text.width - text.paintedWidth) / 2;
        let y = 0;
        if (text.verticalAlignment === Text.AlignVCenter)
            y = (text.height - text.paintedHeight) / 2;
        return text.mapToItem(ancestor, Qt.rect(x, y, text.paintedWidth, text.paintedHeight));
    }

    /// Whether two rectangles share more than an edge.
    function overlap(a, b) {
        const slack = 0.01;
        return Math.min(a.right, b.right) - Math.max(a.left, b.left) > slack && Math.min(a.bottom,
            b.bottom) - Math.max(a.top, b.top) > slack;
    }

    /// Waits until the window draws nothing and is not about to.
    function settle() {
        tools.settle();
    }

    function compareRect(actual, expected, what) {
        for (const part of ["x", "y", "width", "height"]) {
            const far = Math.abs(actual[part] - expected[part]);
            verify(far <= 1e-9 * Math.max(1, Math.abs(expected[part])), what + ": " + actual + " instead of " + expected);
        }
    }
}
