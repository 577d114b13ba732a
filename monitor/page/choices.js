// What the reader chooses. All but the filter is remembered, if the browser allows it.

/** @template {Element} T @param {string} id @param {new () => T} type @returns {T} */
function element(id, type) {
  const found = document.getElementById(id);
  if (!(found instanceof type)) throw new Error(`the page has no ${id}`);
  return found;
}

class Choices {
  static #remembered = ["order", "unit", "theme"];
  #form = element("choices", HTMLFormElement);

  /** @param {() => void} changed called after each change */
  constructor(changed) {
    for (const name of Choices.#remembered) this.#restore(name);
    this.#applyTheme();
    this.#form.addEventListener("submit", (event) => event.preventDefault());
    this.#form.addEventListener("input", () => {
      for (const name of Choices.#remembered) store(name, this.#chosen(name));
      this.#applyTheme();
      changed();
    });
  }

  get filter() { return this.#chosen("filter").trim().toLowerCase(); }
  get order() { return this.#chosen("order"); }
  get unit() { return this.#chosen("unit"); }

  /** @param {string} name */
  #chosen(name) {
    return String(new FormData(this.#form).get(name));
  }

  /** @param {string} name */
  #restore(name) {
    const value = stored(name);
    for (const choice of this.#form.querySelectorAll(`[name=${name}] option, [name=${name}]`)) {
      if (choice instanceof HTMLOptionElement && choice.value === value) choice.selected = true;
      if (choice instanceof HTMLInputElement && choice.value === value) choice.checked = true;
    }
  }

  #applyTheme() {
    document.documentElement.dataset.theme = this.#chosen("theme");
  }
}

/** @param {string} name */
function stored(name) {
  try {
    return localStorage.getItem(`halvermonte.${name}`);
  } catch {
    return null;
  }
}

/** @param {string} name @param {string} value */
function store(name, value) {
  try {
    localStorage.setItem(`halvermonte.${name}`, value);
  } catch {
    // The browser keeps nothing for this page. The choice lasts as long as the page.
  }
}
