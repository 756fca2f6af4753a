# Copyright (c) 2026 the Hv authors
# SPDX-License-Identifier: MIT

"""Tests of the Python module: what goes in comes out, and what is refused is said."""

import doctest
import math
import pathlib
import threading
import unittest

import hv
import numpy

HERE = pathlib.Path(__file__).parent


class CurveTest(unittest.TestCase):
  def setUp(self):
    self.curve = hv.Curve()
    for x, y in ((0, 0), (1, 4), (3, 2)):
      self.curve.add_key(x, y, hv.Segment.LINEAR)

  def test_lines_between_keys(self):
    self.assertEqual(self.curve.eval(0.5), 2.0)
    self.assertIsInstance(self.curve.eval(0.5), float)
    values = self.curve.eval([[0, 0.5], [1, 2], [3, 9]])
    numpy.testing.assert_array_equal(values, [[0, 2], [4, 3], [2, 2]])

  def test_keys_as_rows(self):
    self.assertEqual(len(self.curve), 3)
    numpy.testing.assert_array_equal(self.curve.keys(), [[0, 0, 0], [1, 4, 4], [3, 2, 2]])
    self.curve.remove_key(1)
    numpy.testing.assert_array_equal(self.curve.keys()[:, 0], [0, 3])

  def test_extrapolation(self):
    self.curve.extrapolation = hv.Extrapolation.RELATIVE_CYCLE
    self.assertEqual(self.curve.extrapolation, hv.Extrapolation.RELATIVE_CYCLE)
    self.assertAlmostEqual(self.curve.eval(3 + 0.5), 2 + 2, 12)

  def test_inverse_and_integral(self):
    rising = hv.Curve()
    rising.add_key(0, 0, hv.Segment.LINEAR)
    rising.add_key(2, 4, hv.Segment.LINEAR)
    self.assertAlmostEqual(rising.inverse(3), 1.5, 12)
    self.assertAlmostEqual(rising.integral(0, 2), 4, 12)
    with self.assertRaises(ValueError):
      self.curve.inverse(3)

  def test_keys_on_the_curve_keep_its_shape(self):
    curve = hv.Curve.through([(0, 0), (3, 1)], hv.Through.C2_SPLINE)
    before = curve.eval(numpy.linspace(0, 3, 31))
    curve.insert_key(1.3)
    self.assertEqual(len(curve), 3)
    numpy.testing.assert_allclose(curve.eval(numpy.linspace(0, 3, 31)), before, atol=1e-12)

  def test_refusals_leave_the_curve(self):
    before = self.curve.to_bytes()
    for call in (lambda: self.curve.add_key(math.nan, 0), lambda: self.curve.remove_key(2),
                 lambda: hv.Curve.from_bytes(before[:-1]), lambda: hv.Curve.from_bytes(b""),
                 lambda: hv.Curve.through([1, 2, 3])):
      with self.assertRaises(ValueError):
        call()
    self.assertEqual(self.curve.to_bytes(), before)

  def test_archive_round_trip(self):
    again = hv.Curve.from_bytes(self.curve.to_bytes())
    self.assertEqual(again.to_bytes(), self.curve.to_bytes())
    again.add_key(5, 5)
    self.assertEqual(len(self.curve), 3)

  def test_threads_share_a_curve(self):
    x = numpy.linspace(-1, 4, 20000)
    expected = self.curve.eval(x)
    results = [None] * 4

    def evaluate(i):
      results[i] = self.curve.eval(x)

    threads = [threading.Thread(target=evaluate, args=(i,)) for i in range(4)]
    for thread in threads:
      thread.start()
    for thread in threads:
      thread.join()
    for result in results:
      numpy.testing.assert_array_equal(result, expected)


class PathTest(unittest.TestCase):
  @staticmethod
  def rectangle():
    path = hv.Path()
    path.move_to(2, 1)
    for x, y in ((5, 1), (5, 3), (2, 3)):
      path.line_to(x, y)
    path.close()
    return path

  def test_fill_covers_the_pixels_inside(self):
    expected = numpy.zeros((4, 6), numpy.uint8)
    expected[1:3, 2:5] = 255
    for smooth in (False, True):
      numpy.testing.assert_array_equal(self.rectangle().fill(6, 4, smooth), expected)

  def test_trace_is_the_inverse_of_fill(self):
    pixels = self.rectangle().fill(6, 4, False)
    path = hv.Path.trace(pixels)
    self.assertEqual((path.num_subpaths, path.num_segments), (1, 4))
    self.assertEqual(path.bounds, (2, 1, 5, 3))
    numpy.testing.assert_array_equal(path.fill(6, 4, False), pixels)
    self.assertEqual(len(hv.Path.trace(pixels, 7)), 0)

  def test_stroke_is_as_wide_as_asked(self):
    path = hv.Path()
    path.move_to(0, 5)
    path.line_to(20, 5)
    self.assertEqual(int(path.stroke(20, 10, stroke_width=4)[:, 10].sum()), 4 * 255)

  def test_fit_stays_within_the_tolerance(self):
    angles = numpy.linspace(0, 2 * math.pi, 200)
    circle = 100 * numpy.stack([numpy.cos(angles), numpy.sin(angles)], 1)
    path = hv.Path.fit(circle, 0.1, closed=True)
    self.assertLessEqual(path.num_segments, 8)
    (outline,) = path.flatten(0.01)
    radii = numpy.hypot(outline[:, 0], outline[:, 1])
    numpy.testing.assert_allclose(radii, 100, atol=0.12)

  def test_moves(self):
    path = self.rectangle()
    path.translate(1, 2)
    path.scale(2, 2)
    path.rotate(180)
    numpy.testing.assert_allclose(path.bounds, (-12, -10, -6, -6), atol=1e-5)

  def test_curves_keep_their_points(self):
    path = hv.Path()
    path.move_to(0, 0)
    path.curve_to(1, 2, 3, 4)
    path.curve_to(5, 6, 7, 8, 9, 10)
    numpy.testing.assert_array_equal(
      path.points, [[0, 0], [1, 2], [3, 4], [5, 6], [7, 8], [9, 10]])
    with self.assertRaises(ValueError):
      path.curve_to(1, 2, 3)

  def test_archive_round_trip(self):
    path = self.rectangle()
    self.assertEqual(hv.Path.from_bytes(path.to_bytes()).to_bytes(), path.to_bytes())
    for damaged in (b"", path.to_bytes()[:-1], hv.Curve().to_bytes()):
      with self.assertRaises(ValueError):
        hv.Path.from_bytes(damaged)

  def test_close_leads_back_where_need_be(self):
    self.assertEqual((self.rectangle().num_segments, len(self.rectangle())), (4, 5))
    back = hv.Path()
    back.move_to(0, 0)
    back.curve_to(1, 2, 3, 4, 0, 0)
    back.close()
    self.assertEqual(back.num_segments, 1)
    back.close()
    self.assertEqual(back.num_segments, 1)

  def test_refusals(self):
    for call in (lambda: hv.Path().fill(0, 4), lambda: hv.Path().close(), lambda: hv.Path().fill(1 << 20, 4),
                 lambda: hv.Path.fit([(0, 0)]), lambda: hv.Path.trace([1, 2, 3])):
      with self.assertRaises(ValueError):
        call()


class MotionPathTest(unittest.TestCase):
  def setUp(self):
    self.path = hv.MotionPath()
    self.path.move_to((0, 0, 0), 10)
    self.path.line_to((3, 4, 0), 20)

  def test_rests_at_both_ends(self):
    numpy.testing.assert_allclose(self.path.eval([0, 10, 20, 99]),
                                  [[0, 0, 0], [0, 0, 0], [3, 4, 0], [3, 4, 0]], atol=1e-9)

  def test_shape_of_the_result(self):
    self.assertEqual(self.path.eval(15).shape, (3,))
    self.assertEqual(self.path.eval(numpy.zeros((2, 5))).shape, (2, 5, 3))
    self.assertEqual(self.path.times, (10, 20))

  def test_archive_round_trip(self):
    again = hv.MotionPath.from_bytes(self.path.to_bytes())
    self.assertEqual(again.to_bytes(), self.path.to_bytes())

  def test_refusals_leave_the_path(self):
    before = self.path.to_bytes()
    for call in (lambda: self.path.line_to((1, 1, 1), 5), lambda: self.path.line_to((1, 1), 30),
                 lambda: hv.MotionPath.from_bytes(before[:-1]), lambda: hv.MotionPath().eval(0)):
      with self.assertRaises(ValueError):
        call()
    self.assertEqual(self.path.to_bytes(), before)


def load_tests(_loader, tests, _pattern):
  readme = (HERE / "README.md").read_text()
  examples = doctest.DocTestParser().get_doctest(
    "\n".join(block.split("```")[0] for block in readme.split("```python\n")[1:]),
    {}, "README.md", None, None)
  tests.addTest(doctest.DocTestCase(examples))
  return tests


if __name__ == "__main__":
  unittest.main()
