"""The benchmarks: what is measured, beside what, and the goals; the page that they are written to."""
