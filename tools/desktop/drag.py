# SPDX-License-Identifier: MIT
"""A drag with the mouse, step by step as a hand does it."""
from x_display import wait_for

BARE_DESKTOP = (625, 600)


class Drag:
    """Begun when made. Each step waits until the programs have answered it: nothing here is timed.

    `has_begun` tells of the drags of programs that are unknown to the X server.
    """

    def __init__(self, x, start, has_begun=None):
        self.x, self.at = x, start
        x.forget_drag()
        x.point(*start)
        x.button(True)
        # Programs begin a drag only after a few pixels of movement with the button held.
        wait_for(lambda: self.nudge(2) or (has_begun or x.is_dragging)(), "the drag to begin")

    def nudge(self, by):
        self.at = self.at[0] + by, self.at[1]
        self.x.point(*self.at)

    def over(self, point, condition, what):
        """Moves to `point` and stirs there, as a hand is never still, until the condition holds."""
        (from_x, from_y), (to_x, to_y) = self.at, point
        for step in range(1, 21):
            self.at = from_x + (to_x - from_x) * step // 20, from_y + (to_y - from_y) * step // 20
            self.x.point(*self.at)
        by = 1

        def stir():
            nonlocal by
            self.nudge(by)
            by = -by
            return condition()
        return wait_for(stir, what)

    def is_taken(self):
        look = self.x.pointer_look()
        return look.startswith("dnd-") and look != "dnd-none"

    def leave(self):
        """Moves over the bare desktop, which takes nothing."""
        self.over(BARE_DESKTOP, lambda: not self.is_taken(), "the bare desktop to refuse the drop")

    def hover(self, point, condition=lambda: True):
        """Waits over `point` until the place takes the drop and the condition holds."""
        # The look of the pointer may still be that of the place before; once it has said no it tells about this one.
        self.leave()
        self.over(point, lambda: self.is_taken() and condition(), f"the place {point} to take the drop")

    def release(self):
        self.x.button(False)

    def drop(self, point):
        self.hover(point)
        self.release()
