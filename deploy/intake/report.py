"""What a report says, read from what the edge put into the stream."""
import dataclasses
import datetime
import json

INT32 = range(-(2**31), 2**31)
INT64 = range(-(2**63), 2**63)


class NoReport(Exception):
    """What was signed is nothing that can be stored, and never will be."""


@dataclasses.dataclass
class Report:
    """A row of the table; the members are its columns, in their order."""
    game_id: str
    player: str
    pop_id: int
    received: datetime.datetime
    stream_id: str
    path: str
    install_id: str
    os: str
    version: str
    channel_id: int
    scene: str
    action: str
    message: str
    token: str
    jwt_token: str


def object_of(text, what):
    try:
        value = json.loads(text)
    except (ValueError, RecursionError) as error:
        raise NoReport(f"{what} is no JSON") from error
    if not isinstance(value, dict):
        raise NoReport(f"{what} is no object")
    return value


def storable(text, name):
    """The database takes neither a zero in a text nor half of a character."""
    try:
        text.encode()
    except UnicodeEncodeError as error:
        raise NoReport(f"{name} is no text") from error
    if "\0" in text:
        raise NoReport(f"{name} has a zero in it")
    return text


def text_of(members, name):
    value = members.get(name, "")
    if not isinstance(value, str):
        raise NoReport(f"{name} is no text")
    return storable(value, name)


def number_of(members, name, allowed):
    value = members.get(name)
    if isinstance(value, bool) or not isinstance(value, int) or value not in allowed:
        raise NoReport(f"{name} is no number of its size")
    return value


def common_parameters(text):
    """Values stand in the query as they are, so that nothing is decoded."""
    return dict(reversed([piece.partition("=")[::2] for piece in text.split("&")]))


def decoded(fields, name):
    try:
        return storable(fields[name].decode(), name.decode())
    except (KeyError, UnicodeDecodeError) as error:
        raise NoReport(f"{name.decode()} is no text") from error


def read_report(stream_id, fields):
    """The report of an entry of the stream. Throws NoReport."""
    parameters = common_parameters(decoded(fields, b"parameters"))
    body = object_of(decoded(fields, b"body"), "the body")
    choice = object_of(text_of(body, "data"), "data")
    install = parameters.get("install_id", "")
    player = text_of(body, "gopenid") or (install and "install:" + install)
    if not player:
        raise NoReport("nobody can be told from it")
    milliseconds = int(stream_id.split(b"-")[0])
    return Report(
        game_id=parameters.get("game_id", ""),
        player=player,
        pop_id=number_of(body, "pop_id", INT32),
        received=datetime.datetime.fromtimestamp(milliseconds / 1000, datetime.timezone.utc),
        stream_id=stream_id.decode(),
        path=decoded(fields, b"path"),
        install_id=install,
        os=parameters.get("os", ""),
        version=parameters.get("version", ""),
        channel_id=number_of(body, "channel_id", INT64),
        scene=text_of(body, "scene"),
        action=text_of(choice, "action"),
        message=text_of(choice, "msg"),
        token=text_of(body, "token"),
        jwt_token=text_of(body, "jwt_token"),
    )
