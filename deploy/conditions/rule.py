#!/usr/bin/python3
"""An example of a studio's own rule: who is to see a conditional popup.

Whom a popup is for stands in Redis: the members of the set "popup:ID" see it, and a web page gets
what stands in "popup:ID:extra", a JSON object. A real one asks
whatever the studio has, from memory, and answers within 200 ms; the edge says no for it after that.
The edge has checked the signature. What the request says of the player is still only a claim.
"""
import argparse
import json
import os
import pathlib

from aiohttp import web
from redis import asyncio as redis
from redis.exceptions import RedisError


def readable(body):
    try:
        value = json.loads(body)
    except (ValueError, RecursionError):
        return {}
    return value if isinstance(value, dict) else {}


async def answer(request):
    body = readable(await request.read())
    player, popup = body.get("gopenid"), body.get("pop_id")
    if not isinstance(player, str) or not isinstance(popup, int):
        return web.json_response({"need_popup": 0})
    # Asked twice for each popup, it must answer the same: nothing is counted here.
    store = request.app["redis"]
    try:
        if not await store.sismember(f"popup:{popup}", player):
            return web.json_response({"need_popup": 0})
        extra = readable(await store.get(f"popup:{popup}:extra") or "{}")
    except RedisError:
        return web.json_response({"need_popup": 0})
    return web.json_response({"need_popup": 1, **({"extra": extra} if extra else {})})


def application(store):
    app = web.Application(client_max_size=64 * 1024)
    app["redis"] = redis.Redis(unix_socket_path=store, socket_timeout=0.15)
    app.router.add_post("/check/{name}", answer)
    return app


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--socket", required=True, help="where the edge asks")
    parser.add_argument("--store", required=True, help="the socket of Redis")
    arguments = parser.parse_args()
    socket = pathlib.Path(arguments.socket)
    socket.unlink(missing_ok=True)
    # The edge's workers are another user's.
    os.umask(0)
    web.run_app(application(arguments.store), path=str(socket), print=None, access_log=None)


if __name__ == "__main__":
    main()
