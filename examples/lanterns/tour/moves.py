"""Has tiling window managers move the game while a popup is up. The popup is over the game
afterwards, and answers."""
import os

from player import record


def play(player):
    sway = os.environ["SCREEN_NAME"].startswith("sway")
    game = f"[pid={player.game.process.pid}]" if sway else '[class="^lanterns$"]'
    to_work_space(player, game, answer_with_the_pointer)
    to_work_space(player, game, answer_with_a_key)
    if sway:
        to_an_output_that_goes(player, game)


def to_work_space(player, game, answer):
    number = player.ask("Welcome, while the game moves to another work space", "1")
    player.page("welcome", shot=False)
    player.screen.manage(f"{game} move container to workspace moved{number}")
    player.screen.manage(f"workspace moved{number}")
    answer(player, number)


def to_an_output_that_goes(player, game):
    before = player.screen.outputs()
    player.screen.manage("create_output")
    output, = player.screen.outputs() - before
    player.screen.manage(f"{game} move container to output {output}, focus")
    number = player.ask("Welcome, on an output that goes", "1")
    player.page("welcome")
    player.screen.manage(f"output {output} disable")
    answer_with_a_key(player, number)


def answer_with_the_pointer(player, number):
    player.press("welcome")
    player.expect(number, 0, record("skip", "start"))


def answer_with_a_key(player, number):
    player.page("welcome")
    player.screen.key("Escape")
    player.expect(number, 0, record("skip"))
