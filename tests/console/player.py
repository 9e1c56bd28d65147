"""What games send, without a game."""
import hashlib
import json

from console import GAME, KEY


def signed(service, path, body, key=KEY):
    """Posts as a game does."""
    query = f"game_id={GAME}&install_id=6F9619FF&os=2&version=1.0.0"
    sig = hashlib.md5(f"{path}?{query}{body}{key}".encode()).hexdigest()
    return service.request("POST", f"{path}?{query}&sig={sig}", body.encode(), token=False)


def answer(service, pop_id, scene, text):
    """Sends a player's commit."""
    data = json.dumps({"action": "commit", "msg": text})
    body = json.dumps({"pop_id": pop_id, "scene": scene, "data": data}, ensure_ascii=False)
    status, _, told = signed(service, "/report/shop", body)
    assert status == 200, told


def refused(service, path, body):
    """Sends a request that is signed with another key."""
    status, _, told = signed(service, path, body, "wrong")
    assert status == 403, told
