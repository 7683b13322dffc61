'use strict';

// The page script runs in whatever web engine a host has, so it keeps to ES5.
module.exports = [
    {
        files: ['**/*.js'],
        languageOptions: {
            ecmaVersion: 5,
            sourceType: 'script',
            globals: {
                console: 'readonly',
                document: 'readonly',
                window: 'readonly',
                hljs: 'readonly',
                marked: 'readonly',
                mermaid: 'readonly',
                renderMathInElement: 'readonly'
            }
        },
        rules: {
            'no-undef': 'error',
            'no-unused-vars': ['error', { caughtErrors: 'none' }],
            'no-redeclare': 'error',
            'no-implicit-globals': 'error',
            'no-loop-func': 'error',
            'no-inner-declarations': 'error',
            eqeqeq: 'error',
            semi: 'error'
        }
    }
];
