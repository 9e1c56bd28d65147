// What the player sees of the page, for the tour: texts, where the buttons are, and what is wrong
// with how it is laid out. As one text, because the order of an object's members is lost on the way.
(() => {
  const text = (element) => element.textContent.trim();
  const shown = (element) => element.getClientRects().length > 0;
  const middle = (element) => {
    const box = element.getBoundingClientRect();
    return [Math.round(box.x + box.width / 2), Math.round(box.y + box.height / 2)];
  };
  const buttons = [...document.querySelectorAll('button')].filter(shown);
  const small = (element) => {
    const box = element.getBoundingClientRect();
    return box.width < 44 || box.height < 44;
  };
  const clipped = (element) => {
    const box = element.getBoundingClientRect();
    return element.scrollWidth > element.clientWidth + 1 || box.left < 0 || box.top < 0 ||
        box.right > innerWidth + 0.5 || box.bottom > innerHeight + 0.5;
  };
  const words = document.querySelectorAll('h1, h2, p:not(.unseen), button');
  return JSON.stringify({
    hello: text(document.getElementById('hello')),
    coins: text(document.getElementById('coins')),
    lanterns: Object.fromEntries([...document.querySelectorAll('.lantern')].map((card) => [
      card.dataset.id, {
        name: text(card.querySelector('h2')),
        price: text(card.querySelector('.price')),
        owned: shown(card.querySelector('.yours')),
        note: text(card.querySelector('.note')),
        button: shown(card.querySelector('.buy')) ? middle(card.querySelector('.buy')) : null
      }])),
    focus: document.activeElement.getAttribute('aria-label'),
    close: middle(document.getElementById('close')),
    dark: matchMedia('(prefers-color-scheme: dark)').matches,
    keyboard: document.hasFocus(),
    wrong: [...buttons.filter(small), ...[...words].filter(shown).filter(clipped)].map(text)
  });
})()
