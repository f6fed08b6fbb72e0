"""Scenes exported, and the models that come of them drawn by the preview: for the scripts that make pages of docs/."""

import json
import pathlib
import shutil
import subprocess
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent
sys.path.append(str(ROOT / "examples"))
sys.dont_write_bytecode = True  # the folder of the examples is installed as it is
import make_examples  # noqa: E402,F401

MARKS = ["volumes", "zones", "supports", "previews"]


def export(program, scene, game, config):
    """Exports the scene into the tree `game`, which is made; its report, and the model texts that are written."""
    game.mkdir(parents=True)
    report = game.with_suffix(".json")
    subprocess.run([program, "export", scene, "--resource-root", game, "--config", config, "--report", report],
                   check=False, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    return json.loads(report.read_text(encoding="utf-8")), sorted(game.rglob("*.mdl"))


def page_of(program, model):
    page = model.with_suffix(".html")
    if not page.exists():
        subprocess.run([program, "preview", model, page], check=True, stdout=subprocess.DEVNULL)
    return str(page)


def draw(packages, pictures, folder):
    """Draws pictures (as draw-pages.mjs takes them); what lay in the folder goes."""
    shutil.rmtree(folder, ignore_errors=True)
    folder.mkdir()
    chromium = shutil.which("chromium") or sys.exit("There is no Chromium to draw with")
    shutil.which("pngquant") or sys.exit("There is no pngquant, which makes pictures small")
    subprocess.run(["node", ROOT / "scripts/draw-pages.mjs", chromium, packages, "/dev/stdin"], check=True, text=True,
                   input=json.dumps([{**picture, "picture": str(folder / picture["picture"])} for picture in pictures]))
