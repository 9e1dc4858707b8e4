"""The rows of the table of scripts/bench: what is compared with what, and the goal of each.

A goal is the largest ratio of ours to the baseline that is wanted, at the largest usual size.
"""

import dataclasses


@dataclasses.dataclass
class Row:
    work: str  # as in the names of the measurements, WORK/WHO/SIZE
    program: str  # build/release/bin/<program>_benchmark
    unit: str  # of what is printed: 'ns/...' for times, 'MB/s', or the unit of a figure
    baselines: dict = dataclasses.field(default_factory=dict)  # WHO: goal, None without one
    limit: float = None  # ours alone may be this much, or for MB/s must be
    growth: float = None  # the time of an item at one size, compared with the size before
    beside: str = ''  # the work whose baselines these are, where it is another
    counted: bool = False  # by --profile, in instructions


ROWS = [
    Row('build', 'build', 'ns/node',
        {'plain': 0.5, 'OCAF': 0.2, 'OpenSceneGraph': 0.1, 'Coin': None}, growth=1.3),

    Row('memory', 'memory', 'bytes/node', {'plain': 0.65}),
    Row('memory without items', 'memory', 'bytes/node', {'plain': None}),
    Row('allocations', 'memory', 'blocks/node', {'plain': None}),
    Row('allocations without items', 'memory', 'blocks/node', {'plain': None}, limit=2),

    Row('look-up', 'lookup', 'ns/path', {'plain': 0.25, 'OCAF': 0.01}, counted=True),

    Row('delete a body', 'delete', 'ns/body', {'plain': 0.5}),
    Row('clear', 'delete', 'ns/node', {'plain': 0.3}),
    Row('destroy', 'delete', 'ns/node', {'plain': 0.3}),

    Row('structure dump', 'dump', 'MB/s', {'ostream': 0.15}, counted=True),
    Row('report walk', 'dump', 'MB/s', limit=300, counted=True),

    Row('render id and back', 'render_id', 'allocations', {'answer': 1}),
    Row('signed ids', 'signed_id', 'ns/id', {'free': 2}),

    Row('PMI members', 'pmi', 'ns/member', {'hash build': 3}, beside='PMI'),
    Row('PMI member ids', 'pmi', 'ns/member', {'hash build': 3}, beside='PMI'),
    Row('PMI nonmember ids', 'pmi', 'ns/member', {'hash build': 3}, beside='PMI'),
    Row('PMI listed ids', 'pmi', 'ns/member', {'hash build': 3}, beside='PMI'),

    Row('container pick', 'container_pick', 'ns/mesh', {'plain loop': 2}, counted=True),
    Row('ray hits triangle', 'ray_triangle', 'ns/triangle', {'scalar': 3}, counted=True),
    Row('ray misses triangle', 'ray_triangle', 'ns/triangle', {'scalar': 3}, counted=True),

    Row('transform vertices', 'vertices', 'ns/vertex', {'memcpy': 2, 'plain loop': 0.4}),
    Row('set vertices', 'vertices', 'ns/vertex', {'memcpy': 2, 'plain loop': 0.4}),

    Row('kesview pick', 'kesview_pick', 'ns/pick', {'Embree': 1.5}),
    Row('kesview pick of a shared body', 'kesview_pick', 'ns/pick', {'Embree': None},
        beside='kesview pick'),
    Row('kesview pick with edges', 'kesview_pick', 'ns/pick', {'Embree': None},
        beside='kesview pick'),
]
