"""The tour through what the game ships: every kind of popup, with no service."""
from player import record


def play_two(player):
    """Shows with the fewest popups that they come, change their page, and give the keyboard back."""
    player.game.wait_keyboard()
    player.shoot("lake")

    number = player.ask("Events: two pages, one after another", "2", pointer=True)
    player.press("fair")
    player.press("double")
    player.expect(number, 0, record("skip", "double"))

    number = player.ask("Welcome, closed with the escape key", "1")
    player.page("welcome")
    player.screen.key("Escape")
    player.expect(number, 0, record("skip"))


def play_some(player):
    """Shows in little time that pointer, keys and pages work."""
    play_two(player)

    number = player.ask("Welcome, closed with the cross", "1")
    player.press_cross("welcome", shot=False)
    player.expect(number, 0, record("skip"))

    with_the_pad(player)

    number = player.ask("The new policy, agreed to", "4", pointer=True)
    player.press_policy(agree=True, picture="policy")
    player.expect(number, 0, record("skip"))

    player.light_a_lantern()


def with_the_pad(player):
    number = player.ask("Events, answered with a game pad", "2")
    player.page("fair", shot=False)
    for button in ("dpup", "dpdown", "dpdown"):
        player.game.pad(button)
    player.expect_pad_at_other("pad")
    player.game.pad("a")
    player.expect(number, 2, record("cancel", "no-fair"))

    number = player.ask("Welcome, left with a game pad", "1")
    player.page("welcome", shot=False)
    player.game.pad("b")
    player.expect(number, 0, record("skip"))


def play(player):
    player.game.wait_keyboard()
    player.light_a_lantern()
    player.shoot("lake")

    number = player.ask("Welcome, answered by the page's button", "1", pointer=True)
    player.press("welcome")
    player.expect(number, 0, record("skip", "start"))

    number = player.ask("Welcome, closed with the cross", "1")
    player.press_cross("welcome", shot=False)
    player.expect(number, 0, record("skip"))

    number = player.ask("Events: two pages, one after another", "2")
    player.press("fair")
    player.page("double", shot=False)
    player.expect_unanswered(number)
    player.press("double")
    player.expect(number, 0, record("skip", "double"))

    number = player.ask("Events: the second is declined", "2", pointer=True)
    player.press("fair", shot=False)
    player.press_later("double")
    player.expect(number, 2, record("cancel", "not-tonight"))

    with_the_pad(player)

    number = player.ask("Policy page by its scene, declined", "3")
    player.press_policy(agree=False, picture="policy-by-scene")
    player.expect(number, 2, record("cancel"))

    number = player.ask("The new policy, agreed to", "4", pointer=True)
    player.press_policy(agree=True, picture="policy")
    player.expect(number, 0, record("skip"))

    number = player.ask("The policy again: it is not new any more", "4")
    player.expect(number, -1, "")

    number = player.ask("What comes before the desktop asks, gone on from", "p", pointer=True)
    player.press_permission("permission")
    player.expect(number, 0, record("skip"))

    number = player.ask("Two requests in quick succession", "5", calls=2)
    player.press("welcome", shot=False)
    player.expect(number, 0, record("skip", "start"))
    player.page("moon", shot=False)
    player.expect_unanswered(number + 1)
    player.press("moon")
    player.expect(number + 1, 0, record("skip", "moon"))

    number = player.ask("A page that comes once", "6", pointer=True)
    player.press("letter")
    player.expect(number, 0, record("skip", "read"))

    number = player.ask("The same again: it does not come back", "6")
    player.expect(number, -1, "No valid Popup now")

    number = player.ask("A small game, left by the arrow", "7")
    player.press_return("arcade")
    player.expect(number, 2, record("cancel"))

    number = player.ask("A gift, accepted; nobody takes the report", "8", pointer=True)
    player.press("gift")
    player.expect(number, 1, record("commit", "three-lanterns"))

    number = player.ask("A wish, sent over the other channel", "9")
    player.press("wish")
    player.expect(number, 1, record("commit", "calm-wind"))

    number = player.light_until_the_night_ends()
    player.press("gift", shot=False)
    player.expect(number, 1, record("commit", "three-lanterns"))

    player.game.wait_keyboard()
    player.fly("Right")
    player.shoot("lake-again")
