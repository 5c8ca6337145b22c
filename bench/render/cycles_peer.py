# Renders the render benchmark's letters with Blender's Cycles on the CPU,
# direct light only, at the benchmark's size and number of samples, and
# prints the seconds the render took. Run by cycles_peer.sh:
#   blender -b --factory-startup -P cycles_peer.py -- letters.obj scene.txt out.png
import math
import sys
import time

import bpy
from mathutils import Matrix, Vector

obj_path, scene_path, out_path = sys.argv[sys.argv.index("--") + 1:][:3]
desc = {}
lights = []
for line in open(scene_path):
    parts = line.split()
    if not parts:
        continue
    if parts[0] == "point_light":
        lights.append([float(v) for v in parts[1:]])
    else:
        desc[parts[0]] = [float(v) for v in parts[1:]]

bpy.ops.wm.read_factory_settings(use_empty=True)
scene = bpy.context.scene
if hasattr(bpy.ops.wm, "obj_import"):
    bpy.ops.wm.obj_import(filepath=obj_path, forward_axis="Y", up_axis="Z")
else:
    bpy.ops.import_scene.obj(filepath=obj_path, axis_forward="Y", axis_up="Z")

gold = bpy.data.materials.new("gold")
gold.diffuse_color = (0.85, 0.62, 0.2, 1)
gold.use_nodes = True
bsdf = gold.node_tree.nodes.get("Principled BSDF")
bsdf.inputs["Base Color"].default_value = (0.85, 0.62, 0.2, 1)
for o in bpy.context.selected_objects:
    o.data.materials.append(gold)

eye = Vector(desc["eye"])
target = Vector(desc["target"])
up = Vector(desc["up"])
forward = (target - eye).normalized()
right = forward.cross(up).normalized()
true_up = right.cross(forward)
rot = Matrix((right, true_up, -forward)).transposed()
cam_data = bpy.data.cameras.new("camera")
cam_data.sensor_fit = "VERTICAL"
cam_data.angle_y = desc["fov_vertical"][0]
cam = bpy.data.objects.new("camera", cam_data)
cam.matrix_world = Matrix.Translation(eye) @ rot.to_4x4()
scene.collection.objects.link(cam)
scene.camera = cam

distance = (eye - target).length
for i, (x, y, z, brightness) in enumerate(lights):
    data = bpy.data.lights.new("light%d" % i, type="POINT")
    data.energy = brightness * 4 * math.pi * distance * distance
    data.shadow_soft_size = 0  # hard shadows, as in the benchmark
    light = bpy.data.objects.new("light%d" % i, data)
    light.location = (x, y, z)
    scene.collection.objects.link(light)

world = bpy.data.worlds.new("world")
world.color = (0, 0, 0)
scene.world = world

width, height = (int(v) for v in desc["size"])
scene.render.engine = "CYCLES"
scene.cycles.device = "CPU"
scene.cycles.samples = int(desc["samples"][0])
scene.cycles.use_adaptive_sampling = False
scene.cycles.use_denoising = False
scene.cycles.max_bounces = 0  # direct light only
scene.cycles.diffuse_bounces = 0
scene.cycles.glossy_bounces = 0
scene.cycles.transmission_bounces = 0
scene.cycles.transparent_max_bounces = 0
scene.render.resolution_x = width
scene.render.resolution_y = height
scene.render.resolution_percentage = 100
scene.render.film_transparent = True
scene.render.filepath = out_path

start = time.perf_counter()
bpy.ops.render.render(write_still=True)
print("cycles_seconds %.3f" % (time.perf_counter() - start))
