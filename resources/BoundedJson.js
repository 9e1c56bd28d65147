// Makes the JSON text of a value. It counts while it writes, and stops at what is too much, so that
// a list in a list in a list costs no more than it may. It runs in pages and in the helper.
(function (longest, most) {
  var stringify = JSON.stringify;
  var isArray = Array.isArray;

  return function (value) {
    var signs = 0;
    var values = 0;
    var problem = '';
    var text;

    function count(name, part) {
      values += 1;
      signs += isArray(this) ? 0 : name.length;
      signs += typeof part === 'string' ? part.length : 0;
      problem = signs > longest ? 'too long' : values > most ? 'too many values' : '';
      if (problem) throw problem;
      return part;
    }

    try {
      text = stringify(value, count);
    } catch (error) {
      if (!problem) throw error;
    }
    return {text: text, problem: problem};
  };
})
